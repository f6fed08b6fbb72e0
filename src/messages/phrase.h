// Parts of messages that are texts themselves: reasons, names of things. phrase_table.inc is their only
// place.
#pragma once

#include <span>

#include "base/bilingual.h"
#include "messages/message.h"

#define ZYR_PHRASE(id, russian, english) id,
enum class ePhrase {
#include "messages/phrase_table.inc"
};
#undef ZYR_PHRASE

struct ePhraseRow {
    // Code page 1251. Placeholders as in base/format.h, the same ones in both texts; forms of words as in
    // base/plural_form.h.
    const char* russian;
    const char* english;
};

// All rows, in the order of the table.
std::span<const ePhraseRow> AllPhrases();
const ePhraseRow& RowOf(ePhrase id);

template <class... Values>
eBilingual Words(ePhrase id, const Values&... values) {
    const ePhraseRow& row = RowOf(id);
    return FillBoth(row.russian, row.english, values...);
}
