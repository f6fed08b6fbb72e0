// Message boxes. Every box of the process goes through one sink, so that a terminal can print it, a host can
// show it and a test can collect it.
#pragma once

#include <functional>
#include <string>

struct eMessage;

namespace platform {

enum class eBoxIcon { None, Stop, Warning };
enum class eBoxButtons { Ok, RetryCancel };
enum class eBoxAnswer { Ok, Retry, Cancel };

struct eMessageBox {
    std::string text{};   // code page 1251; lines end in LF
    std::string title{};  // code page 1251
    eBoxIcon icon = eBoxIcon::None;
    eBoxButtons buttons = eBoxButtons::Ok;
    bool topMost = false;
    void* parent = nullptr;  // the host's window handle, null for a box without owner
    // What the box tells, for who keeps a record of it: alive while the box is shown. Null for a fatal error.
    const eMessage* message = nullptr;
};

// Answers Ok to a box with one button, Retry or Cancel to the other kind.
using eMessageBoxSink = std::function<eBoxAnswer(const eMessageBox&)>;

// Shows the box and waits for its answer.
eBoxAnswer ShowMessageBox(const eMessageBox& box);

// Puts another sink in place and gives back the previous one. An empty sink stands for the platform's own:
// standard error on POSIX (it answers Ok or Cancel), a window on Windows.
eMessageBoxSink SetMessageBoxSink(eMessageBoxSink sink);

}  // namespace platform
