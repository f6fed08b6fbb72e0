// Faults that nobody expects. Fail ends the process after a box; Warn writes a record and the caller goes on.
// What an artist can cure is told through base/user_message.h instead.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/message_box.h"

struct eMessage;

// Fatal error: record, box, exit code 1. Under a handling mode it throws instead (xDebug below).
// sourceFile and line are __FILE__ and __LINE__; the message is in code page 1251.
[[noreturn]] void Fail(const char* sourceFile, int line, const std::string& message);

// A warning goes to the log sink and changes nothing.
void Warn(const char* sourceFile, int line, const std::string& message);

namespace xDebug {

// Gets the complete records, in code page 1251, each with its line ends.
using eLogSink = std::function<void(const std::string& record)>;
// Puts another sink in place and gives back the previous one. An empty sink is the default one, standard
// error.
eLogSink SetLogSink(eLogSink sink);
// Hands the sink a record.
void Log(const std::string& record);

// Gets what is told without a box.
using eAdviceSink = std::function<void(const eMessage& advice)>;
// Puts another sink in place and gives back the previous one. Without one, advice goes to the log sink.
eAdviceSink SetAdviceSink(eAdviceSink sink);

class eException {
public:
    virtual ~eException() = default;
};

// Thrown by Fail in the mode throwInstead.
class eEx_Custom : public eException {
public:
    eEx_Custom(std::string messageText, std::string checkPointLocation, std::string wholeReport)
        : message(std::move(messageText)),
          location(std::move(checkPointLocation)),
          report(std::move(wholeReport)) {}

    const std::string message;
    const std::string location;  // Location() of the innermost check-point, empty without one
    const std::string report;    // as a box would have shown it
};

// Thrown when the user chooses Retry in a box that offers it.
class eEx_Retry : public eException {};

// Bits of a handling mode.
inline constexpr std::uint32_t throwInstead = 0x004;
inline constexpr std::uint32_t noLogRecord = 0x100;
// As a whole word: the box offers Retry and shows the mode's text below the report.
inline constexpr std::uint32_t offerRetry = 2;

// How fatal errors go on while the object lives; the innermost one counts, and without any the mode is 0.
class eHandlingMode {
public:
    explicit eHandlingMode(std::uint32_t mode, std::string text = {});
    ~eHandlingMode();
    eHandlingMode(const eHandlingMode&) = delete;
    eHandlingMode& operator=(const eHandlingMode&) = delete;
};

// True from the throw of an eEx_Custom until ClearExceptionFlag: clean-up code looks at it.
bool IsExceptionUnderWay();
void ClearExceptionFlag();

namespace xCheckPoint {

// A frame of context that can tell where the work stands; see eScope.
class eInformer {
public:
    virtual ~eInformer() = default;
    virtual std::string Text() const = 0;
    virtual std::string Location() const = 0;
    virtual std::string Detail() const { return {}; }
    virtual bool HasDetail() const { return false; }
};

// A check-point of this thread while the object lives. Reports list them, innermost first. The informer must
// outlive the scope. Scopes may end in any order, but on the thread where they began.
class eScope {
public:
    explicit eScope(std::string text);
    explicit eScope(const eInformer& informer);
    ~eScope();
    eScope(const eScope&) = delete;
    eScope& operator=(const eScope&) = delete;
};

}  // namespace xCheckPoint

// How fatal errors are shown. Replaceable; the default one shows a top-most box without owner.
class eErrorHandler {
public:
    virtual ~eErrorHandler();
    virtual bool IsDebuggerAttached();
    // Shows the report; throws eEx_Retry if the box offers Retry and the user takes it.
    virtual void ShowError(const std::string& text);
    virtual void PrepareBox(platform::eMessageBox& box);
    virtual void BeforeBox() {}
    virtual void AfterBox() {}
    virtual void BeforeRetry() {}
};

// Puts another handler in place (null: the default one) and gives back the previous one. It stays the
// caller's.
eErrorHandler* SetErrorHandler(eErrorHandler* handler);

// A whole number that steers the diagnostics, known by its name. Nothing in the system changes one:
// "dbg_exceptions" (0; else break into an attached debugger before a fatal error is handled),
// "dbg_warning_level" (0; a warning is logged from 0 on) and
// "dbg_warningErrorLevel" (-1; a warning is a fatal error from 0 on).
// Null for an unknown name.
int* FindDebugSetting(std::string_view name);

// Where records and fatal errors of the process go.
struct eReporting {
    eLogSink logSink;
    eAdviceSink adviceSink;
    eErrorHandler* errorHandler = nullptr;  // not owned; null: the default one
};

// The record in use; SetLogSink and SetErrorHandler change it.
eReporting& Reporting();
// Puts another record in use, which stays the caller's; null goes back to this code's own one.
void UseReporting(eReporting* reporting);

// Unhandled processor exceptions go to the log sink, to a box, and end the process with exit code 1.
// The default error handler's end puts the previous filter back.
void InstallExceptionReport();

}  // namespace xDebug
