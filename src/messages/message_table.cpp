#include "messages/message_table.h"

#include <algorithm>

#include "base/ansi.h"

namespace {

// The empty literal at the end makes a literal of code page 1251 of all those in front of it.
#define ZYR_MESSAGE(id, code, kind, russian, english, cure, russianCure) \
    {code, eMessageKind::kind, russian ""_ansi, english, cure, russianCure ""_ansi},
constexpr eMessageRow kMessages[] = {
#include "messages/message_table.inc"
};
#undef ZYR_MESSAGE

}  // namespace

std::span<const eMessageRow> AllMessages() {
    return kMessages;
}

const eMessageRow& RowOf(eMessageId id) {
    return kMessages[static_cast<std::size_t>(id)];
}

const eMessageRow* FindMessage(std::string_view code) {
    const auto* row = std::ranges::find(
        kMessages, code, [](const eMessageRow& message) { return std::string_view(message.code); });
    return row != std::end(kMessages) ? row : nullptr;
}

eSeverity SeverityOf(eMessageKind kind) {
    switch (kind) {
        case eMessageKind::Error:
        case eMessageKind::LossError:
            return eSeverity::Error;
        case eMessageKind::Warning:
        case eMessageKind::LossWarning:
        case eMessageKind::Record:
            return eSeverity::Warning;
        case eMessageKind::Advice:
            return eSeverity::Advice;
        case eMessageKind::Fatal:
            break;
    }
    return eSeverity::Fatal;
}

const char* SeverityWord(eSeverity severity) {
    constexpr const char* kWords[] = {"error", "warning", "advice", "fatal"};
    return kWords[static_cast<std::size_t>(severity)];
}
