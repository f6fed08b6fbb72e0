#include "messages/phrase_match.h"

#include <vector>

#include "base/ansi.h"

namespace {

constexpr std::string_view kPlace = "%s";

// Nothing if the text does not fit.
std::optional<std::vector<std::string>> ValuesIn(std::string_view text, std::string_view pattern) {
    std::vector<std::string> values;
    for (std::size_t place = pattern.find(kPlace); place != pattern.npos; place = pattern.find(kPlace)) {
        if (!text.starts_with(pattern.substr(0, place))) {
            return std::nullopt;
        }
        text.remove_prefix(place);
        pattern.remove_prefix(place + kPlace.size());
        const std::string_view behind = pattern.substr(0, pattern.find(kPlace));
        const std::size_t end = behind.empty() ? text.size() : text.find(behind);
        if (end == text.npos) {
            return std::nullopt;
        }
        values.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return text == pattern ? std::optional(values) : std::nullopt;
}

}  // namespace

std::optional<std::string> Retold(std::string_view text, std::string_view pattern, const std::string& other,
                                  eLanguage language) {
    const std::optional<std::vector<std::string>> values = ValuesIn(text, pattern);
    if (!values) {
        return std::nullopt;
    }
    format told(WithForms(other, language, *values));
    for (const std::string& value : *values) {
        told % value;
    }
    return told.Text();
}

eBilingual ByPhrase(const std::string& english, std::span<const ePhrase> phrases) {
    for (const ePhrase phrase : phrases) {
        const ePhraseRow& row = RowOf(phrase);
        if (const auto russian = Retold(english, row.english, ToUtf8(row.russian), eLanguage::Russian)) {
            return {*russian, english};
        }
    }
    return {english, english};
}
