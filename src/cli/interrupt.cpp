#include "cli/interrupt.h"

#include <csignal>
#include <cstdlib>

#include "cli/exit_code.h"

namespace cli {

namespace {

volatile std::sig_atomic_t interrupted = 0;

void OnInterrupt(int signal) {
    if (interrupted != 0) {
        std::_Exit(kExitCancelled);
    }
    interrupted = 1;
    std::signal(signal, OnInterrupt);
}

}  // namespace

void CatchInterrupts() {
    std::signal(SIGINT, OnInterrupt);
}

bool IsInterrupted() {
    return interrupted != 0;
}

}  // namespace cli
