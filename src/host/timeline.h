#pragma once

#include <algorithm>
#include <cstdint>

#include "host/interface.h"

namespace host {

// True if the time of a frame, in ticks, lies inside what a TimeValue holds.
inline bool IsOnTimeline(Interface& host, int frame) {
    const std::int64_t time = std::int64_t{frame} * host.GetTicksPerFrame();
    return kForever.start < time && time < kForever.end;
}

// The time at which a frame begins; a frame that is not on the timeline is brought to its nearest end.
inline TimeValue TimeOfFrame(Interface& host, int frame) {
    const std::int64_t time = std::int64_t{frame} * host.GetTicksPerFrame();
    return static_cast<TimeValue>(std::clamp<std::int64_t>(time, kForever.start, kForever.end));
}

}  // namespace host
