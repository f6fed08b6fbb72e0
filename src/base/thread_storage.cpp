#include "base/thread_storage.h"

#include "base/diagnostics.h"
#include "base/format.h"

void AllocateThreadStorageSlot(platform::eThreadSlot& slot) {
    if (const int error = slot.Allocate(); error != 0) {
        Fail(__FILE__, __LINE__, (format("Thread Storage Overflow : %1%") % error).Text());
    }
}
