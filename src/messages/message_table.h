// The table of all that is told to the artist: message_table.inc is the only place of these texts.
#pragma once

#include <span>
#include <string_view>

// What a message is, which settles how it is shown.
enum class eMessageKind {
    Error,        // a box of the system
    Warning,      // the same with a milder icon
    LossError,    // a box because the run leaves out something that the artist asked for
    LossWarning,  // the same for a part of it: the rest of it is written
    Advice,       // never a box: log record, terminal and report only
    Record,       // a warning of the base library: a log record, as advice
    Fatal,        // a box, and the end of the process
};

#define ZYR_MESSAGE(id, code, kind, russian, english, cure, russianCure) id,
enum class eMessageId {
#include "messages/message_table.inc"
};
#undef ZYR_MESSAGE

struct eMessageRow {
    const char* code;  // stable: scripts may hang on it
    eMessageKind kind;
    // Code page 1251. Placeholders as in base/format.h, the same ones in both texts; forms of words as in
    // base/plural_form.h.
    const char* russian;
    const char* english;
    const char* cure;         // one sentence, English
    const char* russianCure;  // the same, code page 1251
};

// All rows, in the order of the table.
std::span<const eMessageRow> AllMessages();
const eMessageRow& RowOf(eMessageId id);
// The row of a code; null for an unknown one.
const eMessageRow* FindMessage(std::string_view code);

// What a kind means to who reads the messages of a run.
enum class eSeverity { Error, Warning, Advice, Fatal };
eSeverity SeverityOf(eMessageKind kind);
// "error", "warning", "advice" or "fatal".
const char* SeverityWord(eSeverity severity);
