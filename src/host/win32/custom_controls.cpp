#include "host/win32/custom_controls.h"

#include "host/win32/spinner.h"

namespace host {
namespace {

constexpr const wchar_t* kEditClass = L"CustEdit";
constexpr const wchar_t* kSpinnerClass = L"SpinnerControl";

// The system's edit field under the host's name.
void RegisterEdit(HINSTANCE module) {
    WNDCLASSEXW edit{};
    edit.cbSize = sizeof edit;
    ::GetClassInfoExW(nullptr, L"EDIT", &edit);
    edit.hInstance = module;
    edit.lpszClassName = kEditClass;
    edit.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
    ::RegisterClassExW(&edit);
}

void RegisterSpinner(HINSTANCE module) {
    WNDCLASSEXW spinner{};
    spinner.cbSize = sizeof spinner;
    spinner.style = CS_DBLCLKS;
    spinner.lpfnWndProc = Spinner::Procedure;
    spinner.hInstance = module;
    spinner.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    spinner.lpszClassName = kSpinnerClass;
    ::RegisterClassExW(&spinner);
}

}  // namespace

void InitCustomControls(HINSTANCE module) {
    RegisterEdit(module);
    RegisterSpinner(module);
}

void ReleaseCustomControls(HINSTANCE module) {
    ::UnregisterClassW(kEditClass, module);
    ::UnregisterClassW(kSpinnerClass, module);
}

ISpinner* GetISpinner(HWND window) {
    return reinterpret_cast<Spinner*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
}

// The window keeps its spinner until it is destroyed.
void ReleaseISpinner(ISpinner*) {}

}  // namespace host
