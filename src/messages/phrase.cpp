#include "messages/phrase.h"

#include "base/ansi.h"

namespace {

#define ZYR_PHRASE(id, russian, english) {russian ""_ansi, english},
constexpr ePhraseRow kPhrases[] = {
#include "messages/phrase_table.inc"
};
#undef ZYR_PHRASE

}  // namespace

std::span<const ePhraseRow> AllPhrases() {
    return kPhrases;
}

const ePhraseRow& RowOf(ePhrase id) {
    return kPhrases[static_cast<std::size_t>(id)];
}
