#include "platform/run_program.h"

namespace platform {

// The build files of a batch need a POSIX shell, so there is nothing to start here.
std::optional<int> RunProgram(const std::vector<std::string>&, const std::string&) {
    return std::nullopt;
}

}  // namespace platform
