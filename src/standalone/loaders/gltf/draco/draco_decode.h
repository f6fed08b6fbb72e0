#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace standalone {

// An attribute of a compressed mesh, and how it is wanted.
struct eDracoAttribute {
    std::uint32_t id = 0;   // within the compressed mesh
    int componentType = 0;  // of the accessor that takes it: 5120 to 5126
    std::size_t width = 0;  // numbers per vertex
};

struct eDracoMesh {
    std::size_t vertexCount = 0;
    std::vector<std::uint32_t> corners;                 // three vertices per triangle
    std::vector<std::vector<std::uint8_t>> attributes;  // as wanted, vertex by vertex, little-endian
};

// Whether this program was built with the library that DecodeDraco needs.
bool KnowsDraco();

// The mesh of a buffer view as KHR_draco_mesh_compression has it. Nothing where the bytes are broken, or lack
// an attribute of that id and width.
std::optional<eDracoMesh> DecodeDraco(std::span<const std::uint8_t> bytes,
                                      std::span<const eDracoAttribute> attributes);

}  // namespace standalone
