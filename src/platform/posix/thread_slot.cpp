#include "platform/thread_slot.h"

#include <pthread.h>

namespace platform {

static_assert(sizeof(pthread_key_t) <= sizeof(std::uintptr_t));

eThreadSlot::~eThreadSlot() {
    if (allocated) {
        ::pthread_key_delete(static_cast<pthread_key_t>(key));
    }
}

int eThreadSlot::Allocate() {
    pthread_key_t made = 0;
    const int error = ::pthread_key_create(&made, nullptr);
    allocated = error == 0;
    key = made;
    return error;
}

void* eThreadSlot::Get() const {
    return ::pthread_getspecific(static_cast<pthread_key_t>(key));
}

void eThreadSlot::Set(void* value) {
    ::pthread_setspecific(static_cast<pthread_key_t>(key), value);
}

}  // namespace platform
