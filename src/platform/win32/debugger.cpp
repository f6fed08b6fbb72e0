#include "platform/debugger.h"

#include <windows.h>

namespace platform {

bool IsDebuggerAttached() {
    return ::IsDebuggerPresent() != FALSE;
}

void BreakIntoDebugger() {
    ::DebugBreak();
}

}  // namespace platform
