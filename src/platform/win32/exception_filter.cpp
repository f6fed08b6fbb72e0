#include "platform/exception_filter.h"

#include <windows.h>

#include <array>

#include "platform/system_exception_text.h"
#include "platform/win32/wide.h"

namespace platform {
namespace {

struct eInstalledFilter {
    eExceptionHandler handler = nullptr;
    LPTOP_LEVEL_EXCEPTION_FILTER previous = nullptr;
};

eInstalledFilter filter;

DWORD WINAPI RunHandler(void* name) {
    filter.handler(static_cast<const char*>(name));
    ::TerminateProcess(::GetCurrentProcess(), 1);
    return 0;
}

// A box needs more stack than an overflow leaves.
void RunHandlerOnOtherStack(std::string name) {
    HANDLE thread = ::CreateThread(nullptr, 0, RunHandler, name.data(), 0, nullptr);
    if (thread != nullptr) {
        ::WaitForSingleObject(thread, INFINITE);
    }
}

LONG WINAPI OnException(EXCEPTION_POINTERS* exception) {
    // A second fault inside the handler is to end the process, not to enter the handler anew.
    ::SetUnhandledExceptionFilter(nullptr);
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    if (code == EXCEPTION_STACK_OVERFLOW) {
        RunHandlerOnOtherStack(ExceptionName(code));
    }
    RunHandler(ExceptionName(code).data());
    return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

void InstallExceptionFilter(eExceptionHandler handler) {
    RestoreExceptionFilter();
    // What is set aside here is left to the filter when the stack has overflown.
    ULONG stackForFilter = 0x4000;
    ::SetThreadStackGuarantee(&stackForFilter);
    filter.handler = handler;
    filter.previous = ::SetUnhandledExceptionFilter(OnException);
}

void RestoreExceptionFilter() {
    if (filter.handler != nullptr) {
        ::SetUnhandledExceptionFilter(filter.previous);
        filter.handler = nullptr;
    }
}

std::string SystemExceptionText(std::uint32_t code) {
    std::array<wchar_t, 1024> text;
    const DWORD length = ::FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_IGNORE_INSERTS,
                                          ::GetModuleHandleW(L"NTDLL.DLL"), code, 0, text.data(),
                                          static_cast<DWORD>(text.size()), nullptr);
    return AnsiFromWide({text.data(), length}).value_or(std::string());
}

}  // namespace platform
