// A message with its values filled in.
#pragma once

#include <array>
#include <string>
#include <utility>

#include "base/bilingual.h"
#include "base/format.h"
#include "base/plural_form.h"
#include "messages/message_place.h"
#include "messages/message_table.h"

struct eMessage {
    eMessageId id;
    eMessagePlace place;
    eBilingual text;
};

// A value is the same in both languages unless it is a text of its own.
template <class Value>
const Value& InRussian(const Value& value) {
    return value;
}
inline const std::string& InRussian(const eBilingual& value) {
    return value.russian;
}
template <class Value>
const Value& InEnglish(const Value& value) {
    return value;
}
inline const std::string& InEnglish(const eBilingual& value) {
    return value.english;
}

// The text with its values in their places, and the words beside numbers in the form that goes with them.
template <class... Values>
std::string Fill(const char* text, eLanguage language, const Values&... values) {
    const std::array<std::string, sizeof...(Values)> printed{(format("%1%") % values).Text()...};
    return (format(WithForms(text, language, printed)) % ... % values).Text();
}

// Fills the placeholders of both texts with the same values.
template <class... Values>
eBilingual FillBoth(const char* russian, const char* english, const Values&... values) {
    return {Fill(russian, eLanguage::Russian, InRussian(values)...),
            Fill(english, eLanguage::English, InEnglish(values)...)};
}

template <class... Values>
eMessage MakeMessage(eMessageId id, eMessagePlace place, const Values&... values) {
    const eMessageRow& row = RowOf(id);
    return {id, std::move(place), FillBoth(row.russian, row.english, values...)};
}
