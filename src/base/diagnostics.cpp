#include "base/diagnostics.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "base/ansi.h"
#include "base/check_point.h"
#include "base/event_bus.h"
#include "base/format.h"
#include "base/intrusive_registrator.h"
#include "platform/debugger.h"
#include "platform/exception_filter.h"

namespace xDebug {
namespace {

struct eDebugSetting : eIntrusiveRegistrator<eDebugSetting> {
    eDebugSetting(const char* settingName, int start);

    const std::string_view name;
    int value;
};

eRegistrationList<eDebugSetting>& DebugSettings() {
    static eRegistrationList<eDebugSetting> list("debug settings");
    return list;
}

eDebugSetting::eDebugSetting(const char* settingName, int start) : name(settingName), value(start) {
    DebugSettings().Append(*this);
}

eDebugSetting breakOnErrors("dbg_exceptions", 0);
eDebugSetting warningLevel("dbg_warning_level", 0);
eDebugSetting warningErrorLevel("dbg_warningErrorLevel", -1);

struct eMode {
    std::uint32_t word = 0;
    std::string text;
};

std::vector<eMode>& Modes() {
    static std::vector<eMode> modes;
    return modes;
}

const eMode& CurrentMode() {
    static const eMode noMode;
    return Modes().empty() ? noMode : Modes().back();
}

eReporting* lentReporting = nullptr;
bool exceptionUnderWay = false;

eErrorHandler& CurrentHandler() {
    static eErrorHandler defaultHandler;
    eErrorHandler* handler = Reporting().errorHandler;
    return handler != nullptr ? *handler : defaultHandler;
}

// The path below the library's root, as the build gives it, or the part from the last backslash on.
std::string ShownSourceFile(std::string_view path) {
    const std::size_t backslash = path.rfind('\\');
    return std::string(backslash == std::string_view::npos ? path : path.substr(backslash));
}

std::string Place(const char* sourceFile, int line) {
    return ShownSourceFile(sourceFile) + ", " + std::to_string(line);
}

std::string ReportText(const char* sourceFile, int line, const std::string& message) {
    std::string report = message + " (" + Place(sourceFile, line) + ")\n" + xCheckPoint::StackText();
    if (const std::string detail = xCheckPoint::InnermostDetail(); !detail.empty()) {
        report += "\n" + detail;
    }
    return report;
}

void LogHandledException(const std::string& report) {
    const char* lineEnd = report.ends_with('\n') ? "" : "\n";
    Log("============== Handled exception ===============\n" + report + lineEnd +
        "------------------------------------------------\n" + xCheckPoint::StackText() +
        "================================================\n");
}

void BreakIfAttached() {
    if (CurrentHandler().IsDebuggerAttached()) {
        platform::BreakIntoDebugger();
    }
}

[[noreturn]] void ThrowCustom(const std::string& message, const std::string& report) {
    exceptionUnderWay = true;
    if (breakOnErrors.value != 0) {
        BreakIfAttached();
    }
    throw eEx_Custom(message, xCheckPoint::InnermostLocation(), report);
}

void OnUnhandledException(const char* name) {
    Log(std::string("============= Unhandled exception ==============\n") + name + "\n");
    platform::eMessageBox box;
    box.text = std::string(name) + "\n\nSee console.log for details.";
    box.title = "Exception";
    box.icon = platform::eBoxIcon::Stop;
    box.topMost = true;
    platform::ShowMessageBox(box);
}

}  // namespace

eReporting& Reporting() {
    static eReporting ownReporting;
    return lentReporting != nullptr ? *lentReporting : ownReporting;
}

void UseReporting(eReporting* reporting) {
    lentReporting = reporting;
}

eLogSink SetLogSink(eLogSink sink) {
    return std::exchange(Reporting().logSink, std::move(sink));
}

void Log(const std::string& record) {
    if (const eLogSink& sink = Reporting().logSink) {
        sink(record);
        return;
    }
    const std::string utf8 = ToUtf8(record);
    std::fwrite(utf8.data(), 1, utf8.size(), stderr);
    // The process may end without another word.
    std::fflush(stderr);
}

eAdviceSink SetAdviceSink(eAdviceSink sink) {
    return std::exchange(Reporting().adviceSink, std::move(sink));
}

eHandlingMode::eHandlingMode(std::uint32_t mode, std::string text) {
    Modes().push_back({mode, std::move(text)});
}
eHandlingMode::~eHandlingMode() {
    Modes().pop_back();
}

bool IsExceptionUnderWay() {
    return exceptionUnderWay;
}
void ClearExceptionFlag() {
    exceptionUnderWay = false;
}

eErrorHandler::~eErrorHandler() {
    platform::RestoreExceptionFilter();
}

bool eErrorHandler::IsDebuggerAttached() {
    return platform::IsDebuggerAttached();
}

void eErrorHandler::ShowError(const std::string& text) {
    const bool offersRetry = CurrentMode().word == offerRetry;
    platform::eMessageBox box;
    box.text = offersRetry ? text + CurrentMode().text : text;
    box.title = offersRetry ? "Exception, can be retried" : "Exception";
    box.buttons = offersRetry ? platform::eBoxButtons::RetryCancel : platform::eBoxButtons::Ok;
    PrepareBox(box);
    BeforeBox();
    const platform::eBoxAnswer answer = platform::ShowMessageBox(box);
    AfterBox();
    if (answer == platform::eBoxAnswer::Retry) {
        BeforeRetry();
        throw eEx_Retry();
    }
}

void eErrorHandler::PrepareBox(platform::eMessageBox& box) {
    box.icon = platform::eBoxIcon::Stop;
    box.topMost = true;
}

eErrorHandler* SetErrorHandler(eErrorHandler* handler) {
    return std::exchange(Reporting().errorHandler, handler);
}

int* FindDebugSetting(std::string_view name) {
    for (eDebugSetting* setting = DebugSettings().First(); setting != nullptr; setting = setting->Next()) {
        if (setting->name == name) {
            return &setting->value;
        }
    }
    return nullptr;
}

void InstallExceptionReport() {
    CurrentHandler();
    platform::InstallExceptionFilter(OnUnhandledException);
}

}  // namespace xDebug

void Fail(const char* sourceFile, int line, const std::string& message) {
    using namespace xDebug;
    const std::string report = ReportText(sourceFile, line, message);
    const std::uint32_t mode = CurrentMode().word;
    if ((mode & noLogRecord) == 0) {
        LogHandledException(report);
    }
    if ((mode & throwInstead) != 0) {
        ThrowCustom(message, report);
    }
    CurrentHandler().ShowError(report);
    BreakIfAttached();
    eEventBus::Process().Dispatch(messageFatalExit);
    std::exit(1);
}

void Warn(const char* sourceFile, int line, const std::string& message) {
    using namespace xDebug;
    if (warningErrorLevel.value >= 0) {
        Fail(sourceFile, line, message);
    }
    if (warningLevel.value >= 0) {
        const std::string location = xCheckPoint::InnermostLocation();
        Log(message + " (" + (location.empty() ? Place(sourceFile, line) : location) + ")\n");
    }
}
