// A program of the build, started beside the test and used through its windows.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace desktop {

class eChildProgram {
public:
    // The name is that of a program of the build, its folder below the build's; the arguments are UTF-8.
    eChildProgram(const std::string& name, const std::vector<std::string>& arguments);
    ~eChildProgram();  // ends it, should it still run
    eChildProgram(const eChildProgram&) = delete;
    eChildProgram& operator=(const eChildProgram&) = delete;

    // The program's window of that title; null if none shows up in time.
    HWND WaitForWindow(const std::string& title) const;
    bool WaitUntilGone(HWND window) const;
    // Its exit code; -1 if it does not end in time.
    int WaitForEnd() const;

private:
    PROCESS_INFORMATION process{};
};

// The folder of the build, with a slash at the end, UTF-8.
std::string BuildFolder();

// Texts are UTF-8.
std::string TextOf(HWND window);
void SetText(HWND window, const std::string& text);
std::string ClassOf(HWND window);
// The texts of all windows in a window.
std::vector<std::string> TextsIn(HWND window);
void PressButton(HWND dialog, int id);
// The one button of a box; null without one.
HWND SoleButton(HWND box);
void Press(HWND button);

}  // namespace desktop
