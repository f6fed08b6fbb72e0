#include "platform/heap.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace platform {
namespace {

constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;

// Address space that the heap takes at once: only what is touched costs memory.
constexpr int kHeapStep = 256 << 20;

std::uintptr_t EndOfHeap() {
    return reinterpret_cast<std::uintptr_t>(::sbrk(0));
}

// From the first whole large page on, so that a run of a small scene touches none.
void AskForLargePages(std::uintptr_t begin, std::uintptr_t end) {
    const std::uintptr_t first = (begin + kLargePage - 1) / kLargePage * kLargePage;
    if (first < end) {
        ::madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
    }
}

}  // namespace

// A system without large pages, or one that gives no address space in advance, refuses; all else stays.
void KeepHeap() {
    const std::uintptr_t begin = EndOfHeap();
    ::mallopt(M_MMAP_THRESHOLD, kHeapStep);
    ::mallopt(M_TRIM_THRESHOLD, 2 * kHeapStep);
    ::mallopt(M_TOP_PAD, kHeapStep);
    // Through a variable that the compiler must not see through, or it would leave out both calls.
    void* volatile first = std::malloc(kLargePage);
    std::free(first);
    AskForLargePages(begin, EndOfHeap());
}

}  // namespace platform
