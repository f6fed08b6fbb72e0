// The terminal that a program was started from, if any.
#pragma once

#include <string>
#include <vector>

namespace platform {

// What the user has typed behind the program's name, in UTF-8; argc and argv are those of main.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// From now on what the program prints is read as UTF-8.
void UseUtf8Terminal();

// True if a person reads along or can be asked: the stream is no file and no pipe.
bool IsErrorTerminal();
bool IsInputTerminal();

// From now on the first interrupt of the user (Ctrl-C) is only remembered, and the second one ends the
// process at once with exit code 130. Calling it again forgets an interrupt of before.
void CatchInterrupts();
// Gives interrupts back to whoever had them before CatchInterrupts.
void ReleaseInterrupts();
bool WasInterrupted();

}  // namespace platform
