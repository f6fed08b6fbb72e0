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

LONG WINAPI OnException(EXCEPTION_POINTERS* exception) {
    // A second fault inside the handler is to end the process, not to enter the handler anew.
    ::SetUnhandledExceptionFilter(nullptr);
    filter.handler(ExceptionName(exception->ExceptionRecord->ExceptionCode).c_str());
    ::TerminateProcess(::GetCurrentProcess(), 1);
    return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

void InstallExceptionFilter(eExceptionHandler handler) {
    RestoreExceptionFilter();
    // A stack overflow leaves the handler what is set aside here.
    ULONG stackForHandler = 0x20000;
    ::SetThreadStackGuarantee(&stackForHandler);
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
