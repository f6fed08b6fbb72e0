// A message with its values filled in.
#pragma once

#include <string>
#include <utility>

#include "base/bilingual.h"
#include "base/format.h"
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

// Fills the placeholders of both texts with the same values.
template <class... Values>
eBilingual FillBoth(const char* russian, const char* english, const Values&... values) {
    return {(format(russian) % ... % InRussian(values)).Text(),
            (format(english) % ... % InEnglish(values)).Text()};
}

template <class... Values>
eMessage MakeMessage(eMessageId id, eMessagePlace place, const Values&... values) {
    const eMessageRow& row = RowOf(id);
    return {id, std::move(place), FillBoth(row.russian, row.english, values...)};
}
