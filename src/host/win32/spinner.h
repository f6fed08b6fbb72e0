#pragma once

#include "host/win32/custom_controls.h"

namespace host {

// What a window of the spinner's class is.
class Spinner : public ISpinner {
public:
    explicit Spinner(HWND spinnerWindow) : window(spinnerWindow) {}
    ~Spinner() override;
    Spinner(const Spinner&) = delete;
    Spinner& operator=(const Spinner&) = delete;

    void SetLimits(int lowestValue, int highestValue) override;
    void SetScale(int step) override { scale = step; }
    void SetValue(int newValue) override;
    int GetIVal() override;
    void LinkToEdit(HWND edit) override;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

private:
    enum class eArrow { None, Up, Down };

    static LRESULT CALLBACK EditProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                          DWORD_PTR spinner);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Press(eArrow arrow);
    void Release();
    void Step(eArrow arrow);
    void Draw();
    RECT ArrowArea(eArrow arrow) const;

    const HWND window;
    HWND linkedEdit = nullptr;
    int lowest = 0;
    int highest = 0;
    int scale = 1;
    int value = 0;
    eArrow pressed = eArrow::None;
};

}  // namespace host
