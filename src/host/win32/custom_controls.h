// The controls that the host brings along for the dialogs of its plug-ins: an edit field for numbers (window
// class "CustEdit") and the spinner beside it ("SpinnerControl").
#pragma once

#include <windows.h>

namespace host {

// Tells the dialog that the user has changed the number: wParam is the spinner's control id.
inline constexpr UINT kSpinnerChange = WM_USER + 600;

// A spinner with the edit field that shows its number.
class ISpinner {
public:
    // Both ends included.
    virtual void SetLimits(int lowest, int highest) = 0;
    // How far a click on an arrow goes.
    virtual void SetScale(int step) = 0;
    virtual void SetValue(int value) = 0;
    // The number in the edit field, brought into the limits; the last sound one if that is no number.
    virtual int GetIVal() = 0;
    // The field shows the number from now on, and takes what the user types.
    virtual void LinkToEdit(HWND edit) = 0;

protected:
    virtual ~ISpinner() = default;
};

// Makes the window classes known for dialogs of the module, and forgets them again: classes do not go with
// the module that has made them.
void InitCustomControls(HINSTANCE module);
void ReleaseCustomControls(HINSTANCE module);

// The spinner of a window of its class; release it when the dialog ends.
ISpinner* GetISpinner(HWND window);
void ReleaseISpinner(ISpinner* spinner);

}  // namespace host
