#include "platform/terminal.h"

#include <unistd.h>

#include <csignal>

namespace platform {
namespace {

volatile std::sig_atomic_t interrupted = 0;
struct sigaction previousAction {};
bool areCaught = false;

extern "C" void OnInterrupt(int) {
    if (interrupted != 0) {
        constexpr int kCancelledExit = 130;
        _exit(kCancelledExit);
    }
    interrupted = 1;
}

}  // namespace

std::vector<std::string> ProgramArguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

// As it always is.
void UseUtf8Terminal() {}

bool IsErrorTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

bool IsInputTerminal() {
    return isatty(STDIN_FILENO) == 1;
}

void CatchInterrupts() {
    interrupted = 0;
    if (areCaught) {
        return;
    }
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    // Reads and writes under way go on: the run stops at its next poll, not in the middle of a file.
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    areCaught = sigaction(SIGINT, &action, &previousAction) == 0;
}

void ReleaseInterrupts() {
    if (areCaught) {
        sigaction(SIGINT, &previousAction, nullptr);
        areCaught = false;
    }
}

bool WasInterrupted() {
    return interrupted != 0;
}

}  // namespace platform
