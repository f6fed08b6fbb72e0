#pragma once

#include <algorithm>
#include <vector>

// Room for `count` more entries. Unlike a plain reserve, many small additions one after the other stay
// linear.
template <class T>
void ReserveMore(std::vector<T>& list, std::size_t count) {
    const std::size_t needed = list.size() + count;
    if (needed > list.capacity()) {
        list.reserve(std::max(needed, list.capacity() * 2));
    }
}
