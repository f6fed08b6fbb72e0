#include "standalone/data/key_search.h"

#include <algorithm>

namespace standalone {

eKeySpan FindKeys(std::span<const double> frames, double frame, std::size_t& hint) {
    const auto isLastBefore = [&](std::size_t key) {
        return key < frames.size() && frames[key] <= frame &&
               (key + 1 == frames.size() || frame < frames[key + 1]);
    };
    if (frame < frames.front()) {
        return {};
    }
    if (isLastBefore(hint + 1)) {
        ++hint;
    } else if (!isLastBefore(hint)) {
        hint = static_cast<std::size_t>(std::ranges::upper_bound(frames, frame) - frames.begin()) - 1;
    }
    if (hint + 1 == frames.size() || frames[hint] == frame) {
        return {hint, hint, 0};
    }
    return {hint, hint + 1, (frame - frames[hint]) / (frames[hint + 1] - frames[hint])};
}

}  // namespace standalone
