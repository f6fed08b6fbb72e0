#pragma once

#include <memory>
#include <utility>

// A member that lies behind a pointer: whoever holds it need not know its type, so a change of the type
// builds only its users anew. It lives as long as its holder, is never null, and is as const as its holder.
// The holder's constructors and destructor stand where the type is known.
template <class T>
class eOwned {
public:
    template <class... Arguments>
    explicit eOwned(Arguments&&... arguments) : value(new T{std::forward<Arguments>(arguments)...}) {}
    eOwned(const eOwned&) = delete;
    eOwned& operator=(const eOwned&) = delete;

    T* operator->() { return value.get(); }
    const T* operator->() const { return value.get(); }
    T& operator*() { return *value; }
    const T& operator*() const { return *value; }

private:
    std::unique_ptr<T> value;
};
