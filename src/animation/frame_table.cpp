#include "animation/frame_table.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

using eRange = std::pair<int, int>;  // first and last frame

// The ranges of the animations, rising, with those that meet made one.
std::vector<eRange> RangesInUse(const std::vector<eExportAnimation>& animations) {
    std::vector<eRange> ranges;
    for (const eExportAnimation& animation : animations) {
        if (animation.inRange) {
            ranges.emplace_back(animation.firstFrame, animation.lastFrame);
        }
    }
    std::ranges::sort(ranges);
    std::vector<eRange> joined;
    for (const eRange& range : ranges) {
        if (joined.empty() || std::int64_t{joined.back().second} + 1 < range.first) {
            joined.push_back(range);
        } else {
            joined.back().second = std::max(joined.back().second, range.second);
        }
    }
    return joined;
}

}  // namespace

eFrameTable::eFrameTable(const std::vector<eExportAnimation>& animations, int boneCount) {
    std::size_t size = 0;
    for (const auto& [first, last] : RangesInUse(animations)) {
        stretches.push_back({first, last, size});
        size += static_cast<std::size_t>(std::int64_t{last} - first + 1);
    }
    frames.resize(size);
    for (eExportFrame& frame : frames) {
        frame.bones.resize(static_cast<std::size_t>(boneCount));
    }
}

std::size_t eFrameTable::IndexOf(int frame) const {
    const auto next = std::ranges::upper_bound(stretches, frame, {}, &eStretch::first);
    const eStretch& stretch = *std::prev(next);
    return stretch.index + static_cast<std::size_t>(std::int64_t{frame} - stretch.first);
}

eExportFrame* eFrameTable::OfMeshFrame(std::size_t meshFrame) {
    return meshFrame < MeshFrameOfFirst() ? nullptr : &frames[meshFrame - MeshFrameOfFirst()];
}

void eFrameTable::DropVertices(std::size_t bone) {
    for (eExportFrame& frame : frames) {
        frame.bones[bone].flags &= static_cast<std::uint16_t>(~kFrameVertices);
        frame.bones[bone].mesh.reset();
    }
}
