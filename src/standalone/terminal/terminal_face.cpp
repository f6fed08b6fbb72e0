#include "standalone/terminal/terminal_face.h"

#include <algorithm>
#include <iostream>
#include <string_view>
#include <utility>

#include "base/ansi.h"
#include "messages/stage_title.h"
#include "messages/utf8_words.h"
#include "platform/system_box.h"
#include "platform/terminal.h"

namespace standalone {

eTerminal StandardTerminal() {
    return {&std::cerr, &std::cin, platform::IsErrorTerminal(), platform::IsInputTerminal()};
}

namespace {

bool IsError(eSeverity severity) {
    return severity == eSeverity::Error || severity == eSeverity::Fatal;
}

const std::string& In(const eTerminal& terminal, const eBilingual& text) {
    return terminal.speaksRussian ? text.russian : text.english;
}

// Of the boxes without a message only that of a fatal error stands above all windows.
eMessage MessageOf(const platform::eMessageBox& box) {
    if (box.message != nullptr) {
        return *box.message;
    }
    return MakeMessage(box.topMost ? eMessageId::SystemFatal : eMessageId::SystemError, {}, box.text);
}

}  // namespace

eTerminalFace::eTerminalFace(const eTerminal& ownTerminal) : terminal(ownTerminal) {
    previousSink =
        platform::SetMessageBoxSink([this](const platform::eMessageBox& box) { return Show(box); });
    previousAdviceSink = xDebug::SetAdviceSink([this](const eMessage& advice) {
        Tell({"", advice});
        DrawProgress();
    });
}

eTerminalFace::~eTerminalFace() {
    EraseProgress();
    xDebug::SetAdviceSink(previousAdviceSink);
    platform::SetMessageBoxSink(previousSink);
}

int eTerminalFace::ErrorCount() const {
    return static_cast<int>(std::ranges::count_if(messages, IsError, &eShownMessage::Severity));
}

void eTerminalFace::TellWarning(const std::string& text) {
    Tell({"", MakeMessage(eMessageId::SystemWarning, {}, text)});
    DrawProgress();
}

void eTerminalFace::Tell(eShownMessage message) {
    messages.push_back(std::move(message));
    EraseProgress();
    Print(messages.back());
}

platform::eBoxAnswer eTerminalFace::Show(const platform::eMessageBox& box) {
    Tell({box.title, MessageOf(box)});
    if (box.parent != nullptr) {
        // Who looks at a window does not look at the terminal.
        return platform::ShowSystemBox(box);
    }
    const platform::eBoxAnswer answer =
        box.buttons == platform::eBoxButtons::Ok ? platform::eBoxAnswer::Ok : Ask();
    DrawProgress();
    return answer;
}

void eTerminalFace::Print(const eShownMessage& message) {
    const eSeverity severity = message.Severity();
    if (!IsError(severity) && terminal.onlyErrors) {
        return;
    }
    std::string lines = SeverityWord(IsError(severity) ? eSeverity::Error : severity) + std::string(": ");
    // A text may end its last line, as the report of a fatal error does; the line ends here anyway.
    const std::string text = ToUtf8(In(terminal, message.message.text));
    for (const char byte : std::string_view(text).substr(0, text.find_last_not_of('\n') + 1)) {
        lines += byte == '\n' ? std::string("\n  ") : std::string(1, byte);
    }
    *terminal.output << lines << std::endl;
}

platform::eBoxAnswer eTerminalFace::Ask() {
    std::string answer;
    while (terminal.answers) {
        *terminal.output << In(terminal, Utf8Words(ePhrase::AskRetry)) << std::flush;
        if (!std::getline(*terminal.input, answer) || answer == "c" || answer == "cancel") {
            break;
        }
        if (answer == "r" || answer == "retry") {
            return platform::eBoxAnswer::Retry;
        }
    }
    return platform::eBoxAnswer::Cancel;
}

void eTerminalFace::Start(const std::string& stageTitle) {
    title = ToUtf8(terminal.speaksRussian ? stageTitle : EnglishStage(stageTitle));
    percent = 0;
    isUnderWay = true;
    begin = std::chrono::steady_clock::now();
    DrawProgress();
}

void eTerminalFace::Update(int newPercent) {
    if (newPercent != percent) {
        percent = newPercent;
        DrawProgress();
    }
}

void eTerminalFace::End() {
    EraseProgress();
    isUnderWay = false;
}

void eTerminalFace::DrawProgress() {
    if (!isUnderWay || !terminal.showsProgress || terminal.onlyErrors) {
        return;
    }
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - begin).count();
    EraseProgress();
    constexpr int kCells = 20;
    const auto filled = static_cast<std::size_t>(std::clamp(percent, 0, 100) * kCells / 100);
    *terminal.output << title << " [" << std::string(filled, '#') << std::string(kCells - filled, '.') << "] "
                     << percent << "% " << seconds / 60 << ':' << seconds % 60 / 10 << seconds % 10
                     << std::flush;
}

void eTerminalFace::EraseProgress() {
    if (isUnderWay && terminal.showsProgress && !terminal.onlyErrors) {
        *terminal.output << "\r\x1b[K" << std::flush;
    }
}

}  // namespace standalone
