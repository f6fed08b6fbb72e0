#include "platform/heap.h"

namespace platform {

// The system's heap keeps what it gets.
void KeepHeap() {}

}  // namespace platform
