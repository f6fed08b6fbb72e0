#include "platform/run_program.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace platform {

namespace {

constexpr int kNotStarted = 127;  // as a shell tells it
constexpr int kSignal = 128;

// In the new process: it becomes the program.
[[noreturn]] void Become(std::vector<char*> arguments, const std::string& folder) {
    if (::chdir(folder.c_str()) == 0) {
        ::execvp(arguments[0], arguments.data());
    }
    ::_exit(kNotStarted);
}

}  // namespace

std::optional<int> RunProgram(const std::vector<std::string>& words, const std::string& folder) {
    std::vector<char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));  // exec leaves them as they are
    }
    arguments.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        Become(std::move(arguments), folder);
    }
    int status = 0;
    while (child > 0 && ::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return std::nullopt;
        }
    }
    if (child < 0 || (WIFEXITED(status) && WEXITSTATUS(status) == kNotStarted)) {
        return std::nullopt;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kSignal + WTERMSIG(status);
}

}  // namespace platform
