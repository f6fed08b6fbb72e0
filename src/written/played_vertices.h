#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "animation/animation_reader.h"
#include "mesh/file/mesh_reader.h"

namespace written {

// The positions of a mesh's vertices as the engine carries them from frame to frame; at first those of the
// mesh file.
class ePlayedVertices {
public:
    explicit ePlayedVertices(const eFileMesh& mesh);

    // False for a section that can't be read or names vertices that are not there.
    bool Take(std::span<const std::uint8_t> section);
    const host::Point3& At(int vertex) const { return positions_[static_cast<std::size_t>(vertex)]; }
    const std::vector<host::Point3>& All() const { return positions_; }

private:
    void Put(std::size_t first, std::size_t count, std::span<const std::uint8_t> vertices);

    std::size_t stride_;
    std::vector<host::Point3> positions_;
};

// The key of the bone in the frame, or null.
const eAnimationKey* KeyIn(const eAnimation& animation, int frame, std::size_t bone);

}  // namespace written
