#pragma once

#include <cstddef>
#include <span>

namespace standalone {

// The keys around a frame: a value moves from key `before` to key `after` as `fraction` goes from 0 to 1.
// Both are the same key before the first, behind the last, and where they would not differ.
struct eKeySpan {
    std::size_t before = 0;
    std::size_t after = 0;
    double fraction = 0;
};

// `frames` is sorted and not empty; of several keys at one frame the last counts from that frame on. `hint`
// is the caller's memory of the last place: a walk along the timeline costs the same whatever the number of
// keys.
eKeySpan FindKeys(std::span<const double> frames, double frame, std::size_t& hint);

}  // namespace standalone
