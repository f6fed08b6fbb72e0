#pragma once

#include <string>

#include "base/diagnostics.h"

// Runs an action whose fatal errors are its caller's to tell. Gives the report of the one that it ended with,
// in code page 1251 without a line end behind; empty if it ended well.
template <class Action>
std::string FailureReport(Action action) {
    const xDebug::eHandlingMode mode(xDebug::throwInstead | xDebug::noLogRecord);
    std::string report;
    try {
        action();
    } catch (const xDebug::eEx_Custom& error) {
        xDebug::ClearExceptionFlag();
        report = error.report.substr(0, error.report.find_last_not_of('\n') + 1);
    }
    return report;
}
