#include "written/played_vertices.h"

#include <algorithm>
#include <cstring>

namespace written {

ePlayedVertices::ePlayedVertices(const eFileMesh& mesh) : stride_(mesh.stride), positions_(mesh.vertexCount) {
    Put(0, mesh.vertexCount, mesh.vertices);
}

bool ePlayedVertices::Take(std::span<const std::uint8_t> section) {
    std::string problem;
    const auto blocks = ReadVertexSection(section, static_cast<int>(stride_), problem);
    for (const eVertexBlock& block : blocks.value_or(std::vector<eVertexBlock>())) {
        const auto first = static_cast<std::size_t>(std::max(block.first, 0));
        const auto count = static_cast<std::size_t>(block.count);
        if (first + count > positions_.size()) {
            return false;
        }
        Put(first, count, block.vertices);
    }
    return blocks.has_value();
}

// A vertex begins with its position.
void ePlayedVertices::Put(std::size_t first, std::size_t count, std::span<const std::uint8_t> vertices) {
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(&positions_[first + i], vertices.data() + i * stride_, sizeof(host::Point3));
    }
}

const eAnimationKey* KeyIn(const eAnimation& animation, int frame, std::size_t bone) {
    const auto record = std::ranges::lower_bound(animation.frames, frame, {}, &eAnimationFrame::frame);
    if (record == animation.frames.end() || record->frame != frame) {
        return nullptr;
    }
    const auto key = std::ranges::find(record->keys, static_cast<int>(bone), &eAnimationKey::bone);
    return key != record->keys.end() ? &*key : nullptr;
}

}  // namespace written
