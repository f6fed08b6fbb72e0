#pragma once

#include <windows.h>

namespace platform {

// The module that this code was linked into. A plug-in is told its own when it is loaded; without that it is
// null, which the system's calls take for the program.
void SetModuleHandle(HINSTANCE module);
HINSTANCE ModuleHandle();

}  // namespace platform
