#pragma once

#include <optional>
#include <string>
#include <vector>

#include "standalone/load_result.h"

namespace standalone {

struct eLoadOptions {
    // Frames a second of a file that counts time in seconds; where it is left out the file's own word counts,
    // or else 30.
    std::optional<double> fps{};
    // Path in code page 1251: makes a model of a scene without properties (as_model.h).
    std::string asModel{};
    // Folders where the pictures of an FBX file and its kin are looked for beside the file's own, UTF-8.
    std::vector<std::string> texturePaths{};
    // Parts meshes that the engine can't hold (shared/fit_meshes.h).
    bool splitMeshes = true;
    // A text with the nodes' properties (shared/property_sidecar.h), UTF-8; without one, that of the scene's
    // name with ".properties" behind it, where there is one.
    std::string propertiesFile{};
};

// Reads a scene file of any known format; its content decides which, not its name. The path is as the
// operating system spells it, UTF-8.
eLoadResult LoadScene(const std::string& path, const eLoadOptions& options = {});

}  // namespace standalone
