#include "host/win32/spinner.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <string>

namespace host {
namespace {

constexpr UINT_PTR kRepeatTimer = 1;
constexpr UINT kFirstRepeatMilliseconds = 400;
constexpr UINT kNextRepeatMilliseconds = 60;
constexpr UINT_PTR kEditSubclass = 1;

Spinner* SpinnerOf(HWND window) {
    return reinterpret_cast<Spinner*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
}

}  // namespace

Spinner::~Spinner() {
    if (linkedEdit != nullptr) {
        ::RemoveWindowSubclass(linkedEdit, EditProcedure, kEditSubclass);
    }
}

void Spinner::SetLimits(int lowestValue, int highestValue) {
    lowest = lowestValue;
    highest = highestValue;
    SetValue(value);
}

void Spinner::SetValue(int newValue) {
    value = std::max(lowest, std::min(newValue, highest));
    if (linkedEdit != nullptr) {
        ::SetWindowTextW(linkedEdit, std::to_wstring(value).c_str());
    }
}

int Spinner::GetIVal() {
    wchar_t text[32] = {};
    if (linkedEdit != nullptr) {
        ::GetWindowTextW(linkedEdit, text, 32);
    }
    wchar_t* end = text;
    constexpr int kDecimal = 10;
    const long long typed = std::wcstoll(text, &end, kDecimal);
    if (end != text) {
        value = static_cast<int>(std::max<long long>(lowest, std::min<long long>(typed, highest)));
    }
    return value;
}

void Spinner::LinkToEdit(HWND edit) {
    linkedEdit = edit;
    ::SetWindowSubclass(edit, EditProcedure, kEditSubclass, reinterpret_cast<DWORD_PTR>(this));
    SetValue(value);
}

// The arrow keys step too, and a number that was typed is brought into the limits when the user goes on.
LRESULT CALLBACK Spinner::EditProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR spinner) {
    Spinner& self = *reinterpret_cast<Spinner*>(spinner);
    if (message == WM_KILLFOCUS) {
        self.SetValue(self.GetIVal());
    } else if (message == WM_KEYDOWN && (wParam == VK_UP || wParam == VK_DOWN)) {
        self.Step(wParam == VK_UP ? eArrow::Up : eArrow::Down);
        return 0;
    } else if (message == WM_NCDESTROY) {
        ::RemoveWindowSubclass(edit, EditProcedure, kEditSubclass);
        self.linkedEdit = nullptr;
    }
    return ::DefSubclassProc(edit, message, wParam, lParam);
}

LRESULT CALLBACK Spinner::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(new Spinner(window)));
        return TRUE;
    }
    Spinner* spinner = SpinnerOf(window);
    if (spinner == nullptr) {
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        delete spinner;
        return 0;
    }
    return spinner->Handle(message, wParam, lParam);
}

LRESULT Spinner::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK: {
            const int y = static_cast<std::int16_t>(HIWORD(lParam));
            Press(y < ArrowArea(eArrow::Up).bottom ? eArrow::Up : eArrow::Down);
            return 0;
        }
        case WM_TIMER:
            ::SetTimer(window, kRepeatTimer, kNextRepeatMilliseconds, nullptr);
            Step(pressed);
            return 0;
        case WM_LBUTTONUP:
            ::ReleaseCapture();
            return 0;
        case WM_CAPTURECHANGED:
            Release();
            return 0;
        case WM_PAINT:
            Draw();
            return 0;
        default:
            return ::DefWindowProcW(window, message, wParam, lParam);
    }
}

void Spinner::Press(eArrow arrow) {
    pressed = arrow;
    ::SetCapture(window);
    ::SetTimer(window, kRepeatTimer, kFirstRepeatMilliseconds, nullptr);
    Step(arrow);
    ::InvalidateRect(window, nullptr, FALSE);
}

void Spinner::Release() {
    pressed = eArrow::None;
    ::KillTimer(window, kRepeatTimer);
    ::InvalidateRect(window, nullptr, FALSE);
}

void Spinner::Step(eArrow arrow) {
    const long long target = std::int64_t{GetIVal()} + (arrow == eArrow::Up ? scale : -scale);
    SetValue(static_cast<int>(std::max<long long>(lowest, std::min<long long>(target, highest))));
    ::SendMessageW(::GetParent(window), kSpinnerChange, static_cast<WPARAM>(::GetDlgCtrlID(window)), 0);
}

void Spinner::Draw() {
    PAINTSTRUCT paint;
    HDC context = ::BeginPaint(window, &paint);
    for (const eArrow arrow : {eArrow::Up, eArrow::Down}) {
        RECT area = ArrowArea(arrow);
        const UINT direction = arrow == eArrow::Up ? DFCS_SCROLLUP : DFCS_SCROLLDOWN;
        ::DrawFrameControl(context, &area, DFC_SCROLL,
                           pressed == arrow ? direction | DFCS_PUSHED : direction);
    }
    ::EndPaint(window, &paint);
}

RECT Spinner::ArrowArea(eArrow arrow) const {
    RECT area;
    ::GetClientRect(window, &area);
    const LONG middle = (area.top + area.bottom) / 2;
    (arrow == eArrow::Up ? area.bottom : area.top) = middle;
    return area;
}

}  // namespace host
