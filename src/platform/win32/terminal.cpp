#include "platform/terminal.h"

#include <windows.h>
// After the system's main header.
#include <shellapi.h>

#include <atomic>

#include "platform/win32/wide.h"

namespace platform {
namespace {

std::atomic<bool> interrupted = false;

bool IsConsole(DWORD stream) {
    DWORD mode = 0;
    return ::GetConsoleMode(::GetStdHandle(stream), &mode) != FALSE;
}

// Runs in a thread of the system's.
BOOL WINAPI OnInterrupt(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    if (interrupted.exchange(true)) {
        constexpr UINT kCancelledExit = 130;
        ::TerminateProcess(::GetCurrentProcess(), kCancelledExit);
    }
    return TRUE;
}

}  // namespace

std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    wchar_t** words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int index = 1; index < count; ++index) {
        arguments.push_back(Utf8FromWide(words[index]));
    }
    ::LocalFree(words);
    return arguments;
}

void UseUtf8Terminal() {
    ::SetConsoleOutputCP(CP_UTF8);
}

bool IsErrorTerminal() {
    return IsConsole(STD_ERROR_HANDLE);
}

bool IsInputTerminal() {
    return IsConsole(STD_INPUT_HANDLE);
}

void CatchInterrupts() {
    interrupted = false;
    ::SetConsoleCtrlHandler(OnInterrupt, FALSE);
    ::SetConsoleCtrlHandler(OnInterrupt, TRUE);
}

void ReleaseInterrupts() {
    ::SetConsoleCtrlHandler(OnInterrupt, FALSE);
}

bool WasInterrupted() {
    return interrupted;
}

}  // namespace platform
