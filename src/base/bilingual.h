// A text in the two languages of the system. Both are in code page 1251: names of the scene stand in either.
#pragma once

#include <string>

enum class eLanguage { English, Russian };

struct eBilingual {
    std::string russian = {};
    std::string english = {};

    bool operator==(const eBilingual&) const = default;
    const std::string& In(eLanguage language) const {
        return language == eLanguage::Russian ? russian : english;
    }
    bool IsEmpty() const { return russian.empty(); }
    eBilingual& operator+=(const eBilingual& more) {
        russian += more.russian;
        english += more.english;
        return *this;
    }
    // Behind the place that it tells of.
    eBilingual At(const std::string& place) const { return {place + ": " + russian, place + ": " + english}; }
    // With a comma in front unless it is the first.
    void AddToList(const eBilingual& item) {
        if (!IsEmpty()) {
            *this += {", ", ", "};
        }
        *this += item;
    }
};
