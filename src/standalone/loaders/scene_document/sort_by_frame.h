#pragma once

#include <algorithm>
#include <vector>

namespace standalone {

// Of several keys at one frame the later in the list stays the later.
template <class Key>
void SortByFrame(std::vector<Key>& keys) {
    std::stable_sort(keys.begin(), keys.end(),
                     [](const Key& left, const Key& right) { return left.frame < right.frame; });
}

}  // namespace standalone
