#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "standalone/load_result.h"

namespace standalone {

struct eGltfOptions {
    // Frames a second; where it is left out the scene's own "host.fps" counts, or else 30.
    std::optional<double> fps{};
    // Path in code page 1251: makes a model of a file without properties (as_model.h), and names unique.
    std::string asModel{};
};

// Reads a glTF 2.0 file, binary or JSON, into a scene. `pathUtf8` is the file's absolute path as the
// operating system spells it: buffers and images are looked for beside it. Whatever is wrong with the file,
// and with the buffers that it names, is told with the JSON path. Images that the file embeds are written to
// a temporary folder that lives as long as the scene. Takes time and memory in proportion to the files and to
// what they unfold to (morph targets by their keys, splines by their frames), and refuses what would unfold
// beyond reason.
eLoadResult ImportGltf(const std::string& pathUtf8, std::string_view bytes, const eGltfOptions& options);

}  // namespace standalone
