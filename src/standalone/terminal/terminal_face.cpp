#include "standalone/terminal/terminal_face.h"

#include <algorithm>
#include <iostream>
#include <string_view>
#include <utility>

#include "base/ansi.h"
#include "platform/system_box.h"
#include "platform/terminal.h"

namespace standalone {

eTerminal StandardTerminal() {
    return {&std::cerr, &std::cin, platform::IsErrorTerminal(), platform::IsInputTerminal(), false};
}

eTerminalFace::eTerminalFace(const eTerminal& ownTerminal) : terminal(ownTerminal) {
    previousSink =
        platform::SetMessageBoxSink([this](const platform::eMessageBox& box) { return Show(box); });
}

eTerminalFace::~eTerminalFace() {
    EraseProgress();
    platform::SetMessageBoxSink(previousSink);
}

int eTerminalFace::WarningCount() const {
    return static_cast<int>(std::ranges::count(messages, eMessageKind::Warning, &eShownMessage::kind));
}

int eTerminalFace::ErrorCount() const {
    return static_cast<int>(messages.size()) - WarningCount();
}

namespace {

// Only the box of a fatal error stands above all windows.
eMessageKind KindOf(const platform::eMessageBox& box) {
    if (box.topMost) {
        return eMessageKind::Fatal;
    }
    return box.title == "Предупреждение"_ansi ? eMessageKind::Warning : eMessageKind::Error;
}

}  // namespace

void eTerminalFace::TellWarning(const std::string& text) {
    Tell({eMessageKind::Warning, "", text});
    DrawProgress();
}

void eTerminalFace::Tell(eShownMessage message) {
    messages.push_back(std::move(message));
    EraseProgress();
    Print(messages.back());
}

platform::eBoxAnswer eTerminalFace::Show(const platform::eMessageBox& box) {
    Tell({KindOf(box), box.title, box.text});
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
    const bool isWarning = message.kind == eMessageKind::Warning;
    if (isWarning && terminal.onlyErrors) {
        return;
    }
    std::string lines = isWarning ? "warning: " : "error: ";
    // A text may end its last line, as the report of a fatal error does; the line ends here anyway.
    const std::string text = ToUtf8(message.text);
    for (const char byte : std::string_view(text).substr(0, text.find_last_not_of('\n') + 1)) {
        lines += byte == '\n' ? std::string("\n  ") : std::string(1, byte);
    }
    *terminal.output << lines << std::endl;
}

platform::eBoxAnswer eTerminalFace::Ask() {
    std::string answer;
    while (terminal.answers) {
        *terminal.output << "[r]etry or [c]ancel? " << std::flush;
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
    title = ToUtf8(stageTitle);
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
