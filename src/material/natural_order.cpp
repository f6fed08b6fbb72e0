#include "material/natural_order.h"

#include <algorithm>
#include <numeric>

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view DigitRun(std::string_view text, std::size_t begin) {
    std::size_t end = begin;
    while (end < text.size() && IsDigit(text[end])) {
        ++end;
    }
    return text.substr(begin, end - begin);
}

// As numbers, of any length.
int CompareRuns(std::string_view a, std::string_view b) {
    a.remove_prefix(std::min(a.find_first_not_of('0'), a.size()));
    b.remove_prefix(std::min(b.find_first_not_of('0'), b.size()));
    return a.size() != b.size() ? (a.size() < b.size() ? -1 : 1) : a.compare(b);
}

int CompareBytes(char a, char b) {
    return static_cast<int>(static_cast<signed char>(a)) - static_cast<int>(static_cast<signed char>(b));
}

int CompareSizes(std::string_view a, std::string_view b) {
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

// The same idea with a position of its own in each name: a strict order.
int CompareByRuns(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (IsDigit(a[i]) && IsDigit(b[j])) {
            const std::string_view runA = DigitRun(a, i);
            const std::string_view runB = DigitRun(b, j);
            if (const int order = CompareRuns(runA, runB); order != 0) {
                return order;
            }
            i += runA.size();
            j += runB.size();
        } else if (a[i] != b[j]) {
            return CompareBytes(a[i], b[j]);
        } else {
            ++i;
            ++j;
        }
    }
    if (const bool restA = i < a.size(); restA != (j < b.size())) {
        return restA ? 1 : -1;
    }
    return CompareSizes(a, b) != 0 ? CompareSizes(a, b) : a.compare(b);
}

bool HasLeadingZero(std::string_view name) {
    for (std::size_t i = 0; i + 1 < name.size(); ++i) {
        if (name[i] == '0' && IsDigit(name[i + 1]) && (i == 0 || !IsDigit(name[i - 1]))) {
            return true;
        }
    }
    return false;
}

bool ComesFirst(std::string_view a, std::string_view b) {
    return CompareNatural(a, b) < 0 && CompareNatural(b, a) > 0;
}

// Takes, from the front of a strict order, always the first name that nothing left has to come before; should
// the names left go round in a circle, the first of them.
std::vector<std::size_t> AgreeWithComparison(std::vector<std::size_t> left,
                                             const std::vector<std::string>& names) {
    std::vector<std::size_t> order;
    while (!left.empty()) {
        const auto isFree = [&](std::size_t candidate) {
            return std::ranges::none_of(
                left, [&](std::size_t other) { return ComesFirst(names[other], names[candidate]); });
        };
        auto next = std::ranges::find_if(left, isFree);
        next = next == left.end() ? left.begin() : next;
        order.push_back(*next);
        left.erase(next);
    }
    return order;
}

}  // namespace

int CompareNatural(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shorter;) {
        if (IsDigit(a[i]) && IsDigit(b[i])) {
            const std::string_view runA = DigitRun(a, i);
            if (const int order = CompareRuns(runA, DigitRun(b, i)); order != 0) {
                return order;
            }
            i += runA.size();
        } else if (a[i] != b[i]) {
            return CompareBytes(a[i], b[i]);
        } else {
            ++i;
        }
    }
    return CompareSizes(a, b);
}

std::vector<std::size_t> NaturalOrder(const std::vector<std::string>& names) {
    std::vector<std::size_t> order(names.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order,
                      [&](std::size_t a, std::size_t b) { return CompareByRuns(names[a], names[b]) < 0; });
    return std::ranges::any_of(names, HasLeadingZero) ? AgreeWithComparison(std::move(order), names) : order;
}
