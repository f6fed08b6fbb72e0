// Collects the message boxes of a test, its advice and the log records, instead of showing them.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "base/diagnostics.h"
#include "messages/message.h"
#include "platform/message_box.h"

namespace support {

// A box in UTF-8, as it would have been shown.
struct eShownBox {
    std::string title;
    std::string text;
    platform::eMessageBox box;  // as it came, in code page 1251
};

class eMessageCollector {
public:
    eMessageCollector() {
        previousSink =
            platform::SetMessageBoxSink([this](const platform::eMessageBox& box) { return Show(box); });
        previousAdvice = xDebug::SetAdviceSink(
            [this](const eMessage& advice) { lines.push_back("Advice: " + ToUtf8(advice.text.russian)); });
        previousLog = xDebug::SetLogSink([this](const std::string& record) { log += ToUtf8(record); });
    }
    ~eMessageCollector() {
        platform::SetMessageBoxSink(previousSink);
        xDebug::SetAdviceSink(previousAdvice);
        xDebug::SetLogSink(previousLog);
    }
    eMessageCollector(const eMessageCollector&) = delete;
    eMessageCollector& operator=(const eMessageCollector&) = delete;

    // The answer to the next box that has a choice; without any it is Cancel.
    void AnswerNext(platform::eBoxAnswer answer) { answers.push_back(answer); }

    // "TITLE: TEXT" of each box and "Advice: TEXT" of what is told without one, in order.
    const std::vector<std::string>& Lines() const { return lines; }
    void Forget() {
        boxes.clear();
        lines.clear();
    }

    std::vector<eShownBox> boxes;
    std::string log;  // UTF-8

private:
    platform::eBoxAnswer Show(const platform::eMessageBox& box) {
        boxes.push_back({ToUtf8(box.title), ToUtf8(box.text), box});
        lines.push_back(boxes.back().title + ": " + boxes.back().text);
        if (box.buttons == platform::eBoxButtons::Ok) {
            return platform::eBoxAnswer::Ok;
        }
        if (answers.empty()) {
            return platform::eBoxAnswer::Cancel;
        }
        const platform::eBoxAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::vector<std::string> lines;
    std::deque<platform::eBoxAnswer> answers;
    platform::eMessageBoxSink previousSink;
    xDebug::eAdviceSink previousAdvice;
    xDebug::eLogSink previousLog;
};

}  // namespace support
