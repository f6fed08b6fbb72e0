#include "messages/utf8_words.h"

eBilingual Counted(std::int64_t count, ePhrase things) {
    const ePhraseRow& row = RowOf(things);
    const std::string one = row.english;
    const std::string number = std::to_string(count);
    const char* const ending = count == 1 ? "" : one.ends_with("sh") ? "es" : "s";
    return {ToUtf8(row.russian) + ": " + number, number + " " + one + ending};
}
