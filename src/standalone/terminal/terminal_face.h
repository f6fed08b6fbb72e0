#pragma once

#include <chrono>
#include <iosfwd>
#include <string>
#include <vector>

#include "base/diagnostics.h"
#include "messages/message.h"
#include "platform/message_box.h"
#include "standalone/terminal/progress_sink.h"

namespace standalone {

// What the run has told, for the report. Code page 1251.
struct eShownMessage {
    std::string title;  // of the box; empty for advice and records
    eMessage message;

    eSeverity Severity() const { return SeverityOf(RowOf(message.id).kind); }
};

// Where the face prints and asks.
struct eTerminal {
    std::ostream* output = nullptr;
    std::istream* input = nullptr;
    bool showsProgress = false;  // a person reads the output
    bool answers = false;        // a person can be asked through the input
    bool onlyErrors = false;     // warnings, advice and progress are kept to oneself
    bool speaksRussian = false;  // else English
};

// Standard error and standard input as they are.
eTerminal StandardTerminal();

// What the user of a terminal sees of a run: messages become lines ("error: TEXT", "warning: TEXT",
// "advice: TEXT", further lines indented by two blanks, in UTF-8), a box with Retry and Cancel is asked where
// somebody can answer, and the progress is a line that is drawn over. While the face lives it is the sink of
// all message boxes and of all advice.
class eTerminalFace : public eProgressSink {
public:
    explicit eTerminalFace(const eTerminal& terminal);
    ~eTerminalFace() override;
    eTerminalFace(const eTerminalFace&) = delete;
    eTerminalFace& operator=(const eTerminalFace&) = delete;

    void Start(const std::string& title) override;
    void Update(int percent) override;
    void End() override;

    // A warning that comes without a box, code page 1251; it is printed and kept like one with a box.
    void TellWarning(const std::string& text);

    // All messages so far in their order, those that were not printed too.
    const std::vector<eShownMessage>& Messages() const { return messages; }
    // Fatal ones are errors.
    int ErrorCount() const;

private:
    void Tell(eShownMessage message);
    platform::eBoxAnswer Show(const platform::eMessageBox& box);
    void Print(const eShownMessage& message);
    platform::eBoxAnswer Ask();
    void DrawProgress();
    void EraseProgress();

    eTerminal terminal;
    platform::eMessageBoxSink previousSink;
    xDebug::eAdviceSink previousAdviceSink;
    std::vector<eShownMessage> messages;
    std::string title;  // of the stage under way, UTF-8
    int percent = 0;
    bool isUnderWay = false;
    std::chrono::steady_clock::time_point begin;  // of the stage
};

}  // namespace standalone
