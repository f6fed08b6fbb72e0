#include "platform/trial.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <new>

namespace platform {
namespace {

constexpr int kExitDone = 0;
constexpr int kExitOutOfMemory = 3;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kOwnsAddresses = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kOwnsAddresses = true;
#else
constexpr bool kOwnsAddresses = false;
#endif
#else
constexpr bool kOwnsAddresses = false;
#endif

void Limit(decltype(RLIMIT_AS) resource, rlim_t most) {
    const rlimit limit{most, most};
    setrlimit(resource, &limit);
}

std::uint64_t HeldBytes() {
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

void SetLimits(const eTrialLimits& limits) {
    Limit(RLIMIT_CORE, 0);
    Limit(RLIMIT_CPU, limits.processorSeconds);
    if (!kOwnsAddresses) {  // a sanitizer reserves terabytes of them
        Limit(RLIMIT_AS, HeldBytes() + limits.memoryBytes);
    }
}

// The copy dies of a signal as the system has it, and neither it nor a library in it says a word on the
// terminal.
void DieQuietly() {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGINT, SIGTERM}) {
        std::signal(signal, SIG_DFL);
    }
}

void WriteAll(int pipe, const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t count = write(pipe, text.data() + done, text.size() - done);
        if (count <= 0) {
            return;
        }
        done += static_cast<std::size_t>(count);
    }
}

std::string ReadAll(int pipe) {
    std::string text;
    std::array<char, 4096> part;
    while (true) {
        const ssize_t count = read(pipe, part.data(), part.size());
        if (count > 0) {
            text.append(part.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return text;
        }
    }
}

[[noreturn]] void BeTheCopy(const std::function<std::string()>& work, const eTrialLimits& limits, int pipe) {
    DieQuietly();
    SetLimits(limits);
    try {
        WriteAll(pipe, work());
        _exit(kExitDone);
    } catch (const std::bad_alloc&) {
        _exit(kExitOutOfMemory);
    }
}

eTrial ResultOf(int status, std::string words) {
    if (WIFEXITED(status)) {
        const bool isDone = WEXITSTATUS(status) == kExitDone;
        return {isDone ? eTrialEnd::Done : eTrialEnd::OutOfMemory, std::move(words)};
    }
    const int signal = WTERMSIG(status);
    return {signal == SIGXCPU || signal == SIGKILL ? eTrialEnd::OutOfTime : eTrialEnd::Died,
            std::to_string(signal)};
}

}  // namespace

eTrial TryInCopy(const std::function<std::string()>& work, const eTrialLimits& limits) {
    std::array<int, 2> pipes{};
    if (pipe(pipes.data()) != 0) {
        return {eTrialEnd::OutOfMemory, {}};
    }
    const pid_t copy = fork();
    if (copy == 0) {
        close(pipes[0]);
        BeTheCopy(work, limits, pipes[1]);
    }
    close(pipes[1]);
    std::string words = copy > 0 ? ReadAll(pipes[0]) : std::string();
    close(pipes[0]);
    int status = 0;
    while (copy > 0 && waitpid(copy, &status, 0) < 0 && errno == EINTR) {
    }
    return copy > 0 ? ResultOf(status, std::move(words)) : eTrial{eTrialEnd::OutOfMemory, {}};
}

}  // namespace platform
