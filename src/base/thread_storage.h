// One object per thread, made at the thread's first use and freed when the storage ends.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/thread_slot.h"

class eCriticalSectionBase {
public:
    virtual ~eCriticalSectionBase() = default;
    virtual void Lock() { mutex.lock(); }
    virtual void Unlock() { mutex.unlock(); }

private:
    std::recursive_mutex mutex;
};

// A value guarded by a critical section: it can be reached under the lock only.
template <class T>
class eCriticalResource : public eCriticalSectionBase {
public:
    template <class Action>
    void WithLock(Action action) {
        Lock();
        action(value);
        Unlock();
    }

private:
    T value;
};

// The slot of a storage, allocated at once; fatal if the system has none left.
void AllocateThreadStorageSlot(platform::eThreadSlot& slot);

// Lives as a function-local static, so that slot and lock are made at the first use in the process.
template <class T>
class eThreadStorage {
public:
    eThreadStorage() { AllocateThreadStorageSlot(slot); }

    // This thread's object.
    T& Get() {
        if (void* known = slot.Get()) {
            return *static_cast<T*>(known);
        }
        auto made = std::make_unique<T>();
        T& object = *made;
        slot.Set(&object);
        objects.WithLock([&](auto& list) { list.push_back(std::move(made)); });
        return object;
    }

private:
    platform::eThreadSlot slot;
    eCriticalResource<std::vector<std::unique_ptr<T>>> objects;
};
