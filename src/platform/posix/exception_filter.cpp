#include "platform/exception_filter.h"

#include <pthread.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>

#include "platform/system_exception_text.h"

namespace platform {
namespace {

constexpr std::array filteredSignals = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP};

struct eInstalledFilter {
    eExceptionHandler handler = nullptr;
    const std::byte* stackEnd = nullptr;  // lowest address of the installing thread's stack
    std::array<struct sigaction, filteredSignals.size()> previous{};
    stack_t previousStack{};
};

eInstalledFilter filter;

// A stack overflow leaves no room for a handler on the stack that has run out.
alignas(16) std::array<std::byte, 0x20000> handlerStack;

std::uint32_t FloatingPointCode(int detail) {
    switch (detail) {
        case FPE_INTDIV:
            return 0xC0000094;
        case FPE_INTOVF:
            return 0xC0000095;
        case FPE_FLTDIV:
            return 0xC000008E;
        case FPE_FLTOVF:
            return 0xC0000091;
        case FPE_FLTUND:
            return 0xC0000093;
        case FPE_FLTRES:
            return 0xC000008F;
        case FPE_FLTSUB:
            return 0xC000008C;
        default:
            return 0xC0000090;
    }
}

// A fault close to the end of the stack is taken for its overflow.
bool IsStackOverflow(const void* faultAddress) {
    constexpr std::ptrdiff_t reach = 0x10000;
    const std::ptrdiff_t distance = static_cast<const std::byte*>(faultAddress) - filter.stackEnd;
    return distance > -reach && distance < reach;
}

std::uint32_t ExceptionCode(int signal, const siginfo_t& info) {
    switch (signal) {
        case SIGBUS:
            return info.si_code == BUS_ADRALN ? 0x80000002 : 0xC0000006;
        case SIGILL:
            return info.si_code == ILL_PRVOPC || info.si_code == ILL_PRVREG ? 0xC0000096 : 0xC000001D;
        case SIGFPE:
            return FloatingPointCode(info.si_code);
        case SIGTRAP:
            return info.si_code == TRAP_TRACE ? 0x80000004 : 0x80000003;
        default:
            return IsStackOverflow(info.si_addr) ? 0xC00000FD : 0xC0000005;
    }
}

extern "C" void OnPatienceEnd(int) {
    ::_exit(1);
}

extern "C" void OnSignal(int signal, siginfo_t* info, void*) {
    // The handler may hang on a lock that the broken code holds: the clock ends the process then.
    constexpr unsigned patienceSeconds = 3;
    std::signal(SIGALRM, OnPatienceEnd);
    ::alarm(patienceSeconds);
    filter.handler(ExceptionName(ExceptionCode(signal, *info)).c_str());
    ::_exit(1);
}

const std::byte* StackEnd() {
    pthread_attr_t attributes;
    void* address = nullptr;
    std::size_t size = 0;
    if (::pthread_getattr_np(::pthread_self(), &attributes) == 0) {
        ::pthread_attr_getstack(&attributes, &address, &size);
        ::pthread_attr_destroy(&attributes);
    }
    return static_cast<const std::byte*>(address);
}

}  // namespace

void InstallExceptionFilter(eExceptionHandler handler) {
    RestoreExceptionFilter();
    filter.handler = handler;
    filter.stackEnd = StackEnd();
    stack_t stack{};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    ::sigaltstack(&stack, &filter.previousStack);
    struct sigaction action {};
    action.sa_sigaction = OnSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    // A second fault inside the handler is to end the process, not to enter the handler anew.
    ::sigfillset(&action.sa_mask);
    ::sigdelset(&action.sa_mask, SIGALRM);
    for (std::size_t index = 0; index < filteredSignals.size(); ++index) {
        ::sigaction(filteredSignals[index], &action, &filter.previous[index]);
    }
}

void RestoreExceptionFilter() {
    if (filter.handler == nullptr) {
        return;
    }
    for (std::size_t index = 0; index < filteredSignals.size(); ++index) {
        ::sigaction(filteredSignals[index], &filter.previous[index], nullptr);
    }
    ::sigaltstack(&filter.previousStack, nullptr);
    filter.handler = nullptr;
}

std::string SystemExceptionText(std::uint32_t) {
    return {};
}

}  // namespace platform
