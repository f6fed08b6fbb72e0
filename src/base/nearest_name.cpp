#include "base/nearest_name.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/ansi.h"

int EditDistance(std::string_view from, std::string_view to) {
    std::vector<int> before;  // the row above the previous one
    std::vector<int> previous;
    std::vector<int> row(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j) {
        row[j] = static_cast<int>(j);
    }
    for (std::size_t i = 1; i <= from.size(); ++i) {
        before = std::exchange(previous, row);
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const int changed = previous[j - 1] + (from[i - 1] != to[j - 1] ? 1 : 0);
            row[j] = std::min({changed, previous[j] + 1, row[j - 1] + 1});
            const bool isSwap = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
            row[j] = isSwap ? std::min(row[j], before[j - 2] + 1) : row[j];
        }
    }
    return row.back();
}

std::string NearestName(std::string_view word, std::span<const std::string> known) {
    constexpr int kLettersPerSlip = 3;
    std::string nearest;
    int least = static_cast<int>(word.size()) / kLettersPerSlip + 1;
    for (const std::string& name : known) {
        const int distance = EditDistance(LowerAnsi(word), LowerAnsi(name));
        if (distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}
