#include <windows.h>
// After the system's main header.
#include <commctrl.h>

#include "host/win32/custom_controls.h"
#include "platform/win32/module_handle.h"

// The system calls it when the module comes and goes, and when threads do.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    static bool hasControls = false;
    platform::SetModuleHandle(module);
    if (!hasControls) {
        hasControls = true;
        host::InitCustomControls(module);
        ::InitCommonControls();
    }
    if (reason == DLL_PROCESS_DETACH) {
        host::ReleaseCustomControls(module);
    }
    return TRUE;
}
