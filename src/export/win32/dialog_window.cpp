#include "export/dialog_window.h"

#include <string>
#include <variant>

#include "base/ansi.h"
#include "base/diagnostics.h"
#include "export/deployment.h"
#include "export/dialog_logic.h"
#include "host/win32/custom_controls.h"
#include "platform/own_module.h"
#include "platform/path_text.h"
#include "platform/win32/module_handle.h"
#include "platform/win32/wide.h"
#include "run/export.h"

namespace {

constexpr WORD kDialogResource = 103;
constexpr int kExportButton = 1;
constexpr int kCancelButton = 2;
constexpr int kSpinnerEdit = 1161;
constexpr int kSpinner = 1162;

Export& RunOf(HWND dialog) {
    return *reinterpret_cast<Export*>(::GetWindowLongPtrW(dialog, GWLP_USERDATA));
}

host::ISpinner& SpinnerOf(HWND dialog) {
    return *host::GetISpinner(::GetDlgItem(dialog, kSpinner));
}

// UTF-8.
std::string TextOf(HWND control) {
    std::wstring wide(static_cast<std::size_t>(::GetWindowTextLengthW(control)) + 1, L'\0');
    wide.resize(
        static_cast<std::size_t>(::GetWindowTextW(control, wide.data(), static_cast<int>(wide.size()))));
    return platform::Utf8FromWide(wide);
}

// A field of the dialog into its control.
struct eShowField {
    HWND control;
    const eDialogFields& fields;

    void operator()(std::monostate) const {}
    void operator()(bool eDialogFields::*flag) const {
        ::SendMessageW(control, BM_SETCHECK, fields.*flag ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    void operator()(std::string eDialogFields::*text) const {
        ::SendMessageW(control, EM_LIMITTEXT, kLongestOptionPath, 0);
        ::SetWindowTextW(control, platform::WideFromAnsi(fields.*text).c_str());
    }
    void operator()(int eDialogFields::*number) const {
        host::GetISpinner(control)->SetValue(fields.*number);
    }
};

// And back.
struct eReadField {
    HWND control;
    eDialogFields& fields;

    void operator()(std::monostate) const {}
    void operator()(bool eDialogFields::*flag) const {
        fields.*flag = ::SendMessageW(control, BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
    // Folders of the machine have names in any alphabet, those of the game in the code page alone.
    void operator()(std::string eDialogFields::*text) const {
        const std::string typed = TextOf(control);
        const std::string ofThePage = FromUtf8(typed).text;
        const bool isOfGame = text == &eDialogFields::commonTextureTarget;
        fields.*text = isOfGame ? ofThePage : platform::PathTextFromUtf8(typed).value_or(ofThePage);
    }
    void operator()(int eDialogFields::*number) const {
        fields.*number = host::GetISpinner(control)->GetIVal();
    }
};

void CentreOver(HWND dialog, HWND parent) {
    RECT over;
    RECT area;
    ::GetWindowRect(parent != nullptr ? parent : ::GetDesktopWindow(), &over);
    ::GetWindowRect(dialog, &area);
    const int x = over.left + ((over.right - over.left) - (area.right - area.left)) / 2;
    const int y = over.top + ((over.bottom - over.top) - (area.bottom - area.top)) / 2;
    ::SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void LinkSpinner(HWND dialog, const Export& run) {
    host::ISpinner& spinner = SpinnerOf(dialog);
    spinner.SetLimits(run.frameStart, run.frameEnd);
    spinner.SetScale(1);
    spinner.LinkToEdit(::GetDlgItem(dialog, kSpinnerEdit));
}

void InitDialog(HWND dialog, Export& run) {
    const bool mayExport = CheckDeployment(platform::OwnModuleFolder(), dialog);
    CentreOver(dialog, static_cast<HWND>(run.host->GetMAXHWnd()));
    ::EnableWindow(::GetDlgItem(dialog, kExportButton), mayExport);
    LinkSpinner(dialog, run);
    const eDialogFields fields = ShowDialogFields(run);
    for (const eDialogControl& control : DialogControls()) {
        std::visit(eShowField{::GetDlgItem(dialog, control.id), fields}, control.field);
    }
}

bool TakeFields(HWND dialog) {
    eDialogFields fields;
    for (const eDialogControl& control : DialogControls()) {
        std::visit(eReadField{::GetDlgItem(dialog, control.id), fields}, control.field);
    }
    return TakeDialogFields(RunOf(dialog), fields, dialog);
}

void End(HWND dialog, bool isAccepted) {
    host::ReleaseISpinner(&SpinnerOf(dialog));
    ::EndDialog(dialog, isAccepted ? 1 : 0);
}

bool OnButton(HWND dialog, int button) {
    if (button == kExportButton && TakeFields(dialog)) {
        End(dialog, true);
    } else if (button == kCancelButton) {
        End(dialog, false);
    }
    return button == kExportButton || button == kCancelButton;
}

INT_PTR CALLBACK ExportDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            ::SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
            InitDialog(dialog, RunOf(dialog));
            return TRUE;
        case WM_COMMAND:
            return OnButton(dialog, LOWORD(wParam));
        case host::kSpinnerChange:
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

bool ShowDialogWindow(Export& run) {
    const HWND parent = static_cast<HWND>(run.host->GetMAXHWnd());
    // Over a parent that is no window the system shows nothing and gives the same 0 as the button "cancel".
    const bool hasPlace = parent == nullptr || ::IsWindow(parent);
    const INT_PTR result =
        hasPlace ? ::DialogBoxParamW(platform::ModuleHandle(), MAKEINTRESOURCEW(kDialogResource), parent,
                                     ExportDlgProc, reinterpret_cast<LPARAM>(&run))
                 : -1;
    if (result < 0) {
        Warn(__FILE__, __LINE__, "the options dialog can't be shown, the stored options are used");
    }
    return result != 0;
}
