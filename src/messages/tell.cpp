#include "messages/tell.h"

#include "base/ansi.h"
#include "base/diagnostics.h"

namespace {

// Nobody waits for it: without anybody who keeps the run's messages it is one line of the log.
void TellAdvice(const eMessage& message) {
    if (const xDebug::eAdviceSink& sink = xDebug::Reporting().adviceSink) {
        sink(message);
    } else {
        xDebug::Log(RowOf(message.id).code + (": " + message.text.russian) + "\n");
    }
}

}  // namespace

void Tell(void* parent, const eMessage& message) {
    switch (RowOf(message.id).kind) {
        case eMessageKind::Advice:
        case eMessageKind::Record:
            TellAdvice(message);
            break;
        case eMessageKind::Warning:
        case eMessageKind::LossWarning:
            ShowAs(message,
                   {.title = "Предупреждение"_ansi, .icon = platform::eBoxIcon::Warning, .parent = parent});
            break;
        default:
            ShowAs(message, {.title = "Ошибка"_ansi, .icon = platform::eBoxIcon::Stop, .parent = parent});
    }
}

platform::eBoxAnswer ShowAs(const eMessage& message, platform::eMessageBox form) {
    form.text = message.text.russian;
    form.message = &message;
    return platform::ShowMessageBox(form);
}
