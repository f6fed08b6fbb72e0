// Collects the message boxes of a test, and the log records, instead of showing them.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "base/diagnostics.h"
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
        previousLog = xDebug::SetLogSink([this](const std::string& record) { log += ToUtf8(record); });
    }
    ~eMessageCollector() {
        platform::SetMessageBoxSink(previousSink);
        xDebug::SetLogSink(previousLog);
    }
    eMessageCollector(const eMessageCollector&) = delete;
    eMessageCollector& operator=(const eMessageCollector&) = delete;

    // The answer to the next box that has a choice; without any it is Cancel.
    void AnswerNext(platform::eBoxAnswer answer) { answers.push_back(answer); }

    // "TITLE: TEXT" of each box, in order.
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (const eShownBox& shown : boxes) {
            lines.push_back(shown.title + ": " + shown.text);
        }
        return lines;
    }

    std::vector<eShownBox> boxes;
    std::string log;  // UTF-8

private:
    platform::eBoxAnswer Show(const platform::eMessageBox& box) {
        boxes.push_back({ToUtf8(box.title), ToUtf8(box.text), box});
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

    std::deque<platform::eBoxAnswer> answers;
    platform::eMessageBoxSink previousSink;
    xDebug::eLogSink previousLog;
};

}  // namespace support
