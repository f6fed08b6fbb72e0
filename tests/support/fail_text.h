#pragma once

#include <string>

#include "base/diagnostics.h"

namespace support {

// Runs the action and gives the message of the fatal error that it ends with; empty if it ends well.
template <class Action>
std::string FailText(Action action) {
    const xDebug::eHandlingMode mode(xDebug::throwInstead);
    std::string message;
    try {
        action();
    } catch (const xDebug::eEx_Custom& error) {
        message = error.message;
    }
    xDebug::ClearExceptionFlag();
    return message;
}

}  // namespace support
