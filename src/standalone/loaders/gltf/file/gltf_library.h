// The library that reads the glTF document, without what it could do with files and pixels: those are this
// importer's own business.
#pragma once

// The same in every source that sees the library's header.
#define TINYGLTF_NO_FS
#define TINYGLTF_NO_EXTERNAL_IMAGE
#define TINYGLTF_NO_STB_IMAGE
#define TINYGLTF_NO_STB_IMAGE_WRITE
#include <tiny_gltf.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "standalone/loaders/gltf/file/gltf_container.h"
#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// Reads a file that has passed the checks; `buffers` are those of ReadGltfBuffers. Embedded images keep their
// bytes as they are, in Image::image. What the library refuses all the same is a problem.
std::optional<tinygltf::Model> ReadGltfModel(std::string_view bytes, const eGltfContainer& container,
                                             std::vector<std::vector<std::uint8_t>> buffers,
                                             const eJsonTree& json, eImportReport& report);

}  // namespace standalone
