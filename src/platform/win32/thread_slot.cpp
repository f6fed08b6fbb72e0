#include "platform/thread_slot.h"

#include <windows.h>

namespace platform {

eThreadSlot::~eThreadSlot() {
    if (allocated) {
        ::TlsFree(static_cast<DWORD>(key));
    }
}

int eThreadSlot::Allocate() {
    const DWORD made = ::TlsAlloc();
    allocated = made != TLS_OUT_OF_INDEXES;
    key = made;
    return allocated ? 0 : static_cast<int>(::GetLastError());
}

void* eThreadSlot::Get() const {
    return ::TlsGetValue(static_cast<DWORD>(key));
}

void eThreadSlot::Set(void* value) {
    ::TlsSetValue(static_cast<DWORD>(key), value);
}

}  // namespace platform
