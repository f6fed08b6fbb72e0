#include "standalone/loaders/json/json_tree.h"

#include <charconv>
#include <cmath>

namespace standalone {
namespace {

// The exact rounding to the type; std::from_chars also refuses what lies below the smallest number.
template <class Number>
std::optional<Number> NearestNumber(std::string_view digits) {
    Number number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc()) {
        return number;
    }
    return std::nullopt;
}

std::string EscapedKey(std::string_view key) {
    std::string escaped;
    for (const char byte : key) {
        if (byte == '~') {
            escaped += "~0";
        } else if (byte == '/') {
            escaped += "~1";
        } else {
            escaped += byte;
        }
    }
    return escaped;
}

}  // namespace

std::size_t eJsonTree::Count(eJsonIndex value) const {
    const bool isContainer = Is(value, eJsonKind::Array) || Is(value, eJsonKind::Object);
    return isContainer ? values[value].count : 0;
}

eJsonIndex eJsonTree::FindMember(eJsonIndex object, std::string_view key) const {
    for (const eJsonIndex member : Children(object)) {
        if (Key(member) == key) {
            return member;
        }
    }
    return kNoJson;
}

std::optional<double> eJsonTree::Double(eJsonIndex value) const {
    if (Is(value, eJsonKind::Integer)) {
        return static_cast<double>(values[value].integer);
    }
    if (!Is(value, eJsonKind::Real)) {
        return std::nullopt;
    }
    // The parser has refused numbers beyond the largest double, so what is left has rounded to nothing.
    return NearestNumber<double>(Text(value)).value_or(0.0);
}

std::optional<float> eJsonTree::Float(eJsonIndex value) const {
    if (Is(value, eJsonKind::Integer)) {
        return static_cast<float>(values[value].integer);
    }
    if (!Is(value, eJsonKind::Real)) {
        return std::nullopt;
    }
    if (const std::optional<float> number = NearestNumber<float>(Text(value))) {
        return number;
    }
    const double outOfRange = *Double(value);
    return std::fabs(outOfRange) < 1 ? std::optional(static_cast<float>(outOfRange)) : std::nullopt;
}

std::string eJsonTree::PathOf(eJsonIndex value) const {
    if (value == kJsonRoot) {
        return "/";
    }
    std::vector<eJsonIndex> steps;
    for (; value != kJsonRoot; value = values[value].parent) {
        steps.push_back(value);
    }
    std::string path;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        path += '/';
        path += values[*step].isMember ? EscapedKey(Key(*step)) : std::to_string(values[*step].position);
    }
    return path;
}

}  // namespace standalone
