#pragma once

namespace platform {

bool IsDebuggerAttached();
// Stops in the debugger; call it only when one is attached.
void BreakIntoDebugger();

}  // namespace platform
