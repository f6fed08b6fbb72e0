#include "desktop/win32/child_program.h"

#include "base/ansi.h"
#include "platform/own_module.h"
#include "platform/win32/wide.h"

namespace desktop {
namespace {

constexpr int kPatienceMilliseconds = 30000;
constexpr int kPauseMilliseconds = 50;

bool WaitFor(const std::function<bool()>& isThere) {
    for (int waited = 0; waited < kPatienceMilliseconds; waited += kPauseMilliseconds) {
        if (isThere()) {
            return true;
        }
        ::Sleep(kPauseMilliseconds);
    }
    return false;
}

BOOL CALLBACK AddText(HWND window, LPARAM texts) {
    reinterpret_cast<std::vector<std::string>*>(texts)->push_back(TextOf(window));
    return TRUE;
}

}  // namespace

eChildProgram::eChildProgram(const std::string& name, const std::vector<std::string>& arguments) {
    std::string line = "\"" + BuildFolder() + name + ".exe\"";
    for (const std::string& argument : arguments) {
        line += " \"" + argument + "\"";
    }
    std::wstring wide = platform::WideFromUtf8(line);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    ::CreateProcessW(nullptr, wide.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process);
}

eChildProgram::~eChildProgram() {
    ::TerminateProcess(process.hProcess, 99);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(process.hThread);
}

HWND eChildProgram::WaitForWindow(const std::string& title) const {
    const std::wstring wide = platform::WideFromUtf8(title);
    HWND found = nullptr;
    WaitFor([&] {
        for (HWND window = nullptr;
             (window = ::FindWindowExW(nullptr, window, nullptr, wide.c_str())) != nullptr;) {
            DWORD owner = 0;
            ::GetWindowThreadProcessId(window, &owner);
            if (owner == process.dwProcessId && ::IsWindowVisible(window)) {
                found = window;
            }
        }
        return found != nullptr;
    });
    return found;
}

bool eChildProgram::WaitUntilGone(HWND window) const {
    return WaitFor([window] { return !::IsWindow(window); });
}

int eChildProgram::WaitForEnd() const {
    DWORD code = 0;
    const bool hasEnded = ::WaitForSingleObject(process.hProcess, kPatienceMilliseconds) == WAIT_OBJECT_0;
    return hasEnded && ::GetExitCodeProcess(process.hProcess, &code) ? static_cast<int>(code) : -1;
}

std::string BuildFolder() {
    return ToUtf8(platform::OwnModuleFolder()) + "../";
}

std::string TextOf(HWND window) {
    wchar_t text[1024] = {};
    ::SendMessageW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
    return platform::Utf8FromWide(text);
}

void SetText(HWND window, const std::string& text) {
    ::SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(platform::WideFromUtf8(text).c_str()));
}

std::string ClassOf(HWND window) {
    wchar_t name[128] = {};
    ::GetClassNameW(window, name, 128);
    return platform::Utf8FromWide(name);
}

std::vector<std::string> TextsIn(HWND window) {
    std::vector<std::string> texts;
    ::EnumChildWindows(window, AddText, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

void PressButton(HWND dialog, int id) {
    Press(::GetDlgItem(dialog, id));
}

HWND SoleButton(HWND box) {
    return ::FindWindowExW(box, nullptr, L"Button", nullptr);
}

void Press(HWND button) {
    ::PostMessageW(button, BM_CLICK, 0, 0);
}

}  // namespace desktop
