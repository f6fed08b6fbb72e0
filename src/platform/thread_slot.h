// A slot of the operating system's thread-local storage: one pointer per thread.
#pragma once

#include <cstdint>

namespace platform {

class eThreadSlot {
public:
    eThreadSlot() = default;
    eThreadSlot(const eThreadSlot&) = delete;
    eThreadSlot& operator=(const eThreadSlot&) = delete;
    ~eThreadSlot();

    // 0, or the system's error code when it has no slot left.
    int Allocate();
    bool IsAllocated() const { return allocated; }
    void* Get() const;  // null until this thread has set it
    void Set(void* value);

private:
    std::uintptr_t key = 0;
    bool allocated = false;
};

}  // namespace platform
