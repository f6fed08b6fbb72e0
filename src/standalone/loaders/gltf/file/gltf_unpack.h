#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "standalone/loaders/gltf/file/gltf_container.h"
#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// A glTF file in which nothing is compressed.
struct ePlainGltf {
    std::string file;
    std::vector<std::vector<std::uint8_t>> buffers;  // as those of ReadGltfBuffers
};

// Whether a checked file holds what the reading library can't take: compressed views and meshes, buffers that
// only stand for those, and channels of animations that name no node.
bool NeedsUnpacking(const eJsonTree& json);

// The same file with its compressed views and meshes unpacked, every other part in its old place. A broken
// stream is a problem; so is a view without bytes that no extension gives any.
ePlainGltf UnpackGltf(const eGltfContainer& container, std::vector<std::vector<std::uint8_t>> buffers,
                      eImportReport& report);

}  // namespace standalone
