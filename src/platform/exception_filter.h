// Unhandled exceptions of the processor: a signal on POSIX, a structured exception on Windows.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

// Gets the exception's name ("ACCESS_VIOLATION"). It runs in a process that is already broken: it may write a
// record and show a box, and the process ends with exit code 1 when it returns (on POSIX, should
// it hang, some seconds later).
using eExceptionHandler = void (*)(const char* name);

// Installs the process-wide filter and keeps the previous one.
void InstallExceptionFilter(eExceptionHandler handler);
// Puts the previous filter back; nothing to do if none was installed.
void RestoreExceptionFilter();

// The name of an exception code; for a code without a name, the operating system's text for it, or empty.
std::string ExceptionName(std::uint32_t code);

}  // namespace platform
