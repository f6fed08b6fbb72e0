// Texts of the tables for files and terminals: they and their values are UTF-8, as names of files lie beyond
// code page 1251.
#pragma once

#include <string>

#include "base/ansi.h"
#include "messages/message.h"
#include "messages/phrase.h"

template <class... Values>
eBilingual Utf8Words(ePhrase id, const Values&... values) {
    const ePhraseRow& row = RowOf(id);
    return FillBoth(ToUtf8(row.russian).c_str(), row.english, values...);
}

template <class... Values>
eBilingual Utf8Text(eMessageId id, const Values&... values) {
    const eMessageRow& row = RowOf(id);
    return FillBoth(ToUtf8(row.russian).c_str(), row.english, values...);
}

// A phrase in one language.
template <class... Values>
std::string Say(eLanguage language, ePhrase id, const Values&... values) {
    return Utf8Words(id, values...).In(language);
}
