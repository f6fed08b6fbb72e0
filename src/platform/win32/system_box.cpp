#include "platform/system_box.h"

#include <windows.h>

#include <string>

#include "platform/win32/wide.h"

namespace platform {
namespace {

DWORD Style(const eMessageBox& box) {
    DWORD style = box.buttons == eBoxButtons::RetryCancel ? MB_RETRYCANCEL : MB_OK;
    if (box.icon == eBoxIcon::Stop) {
        style |= MB_ICONSTOP;
    } else if (box.icon == eBoxIcon::Warning) {
        style |= MB_ICONEXCLAMATION;
    }
    return box.topMost ? style | MB_TOPMOST : style;
}

}  // namespace

eBoxAnswer ShowSystemBox(const eMessageBox& box) {
    const std::wstring text = WideFromAnsi(box.text);
    const std::wstring title = WideFromAnsi(box.title);
    MSGBOXPARAMSW params{};
    params.cbSize = sizeof params;
    params.hwndOwner = static_cast<HWND>(box.parent);
    params.lpszText = text.c_str();
    params.lpszCaption = title.c_str();
    params.dwStyle = Style(box);
    const int pressed = ::MessageBoxIndirectW(&params);
    if (box.buttons == eBoxButtons::Ok) {
        return eBoxAnswer::Ok;
    }
    return pressed == IDRETRY ? eBoxAnswer::Retry : eBoxAnswer::Cancel;
}

}  // namespace platform
