#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "standalone/loaders/gltf/file/gltf_container.h"
#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// The content of each buffer of a checked file that has a URI, cut to the length that the file tells: of the
// file that it names, or of its data URI. The buffer in the binary part stays empty, because whoever has the
// container has its bytes; so does one that only stands for compressed data. A buffer that can't be read, or
// is shorter than told, is a problem.
std::vector<std::vector<std::uint8_t>> ReadGltfBuffers(const eJsonTree& json, const eGltfContainer& container,
                                                       const std::string& folder, eImportReport& report);

}  // namespace standalone
