#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "standalone/load_result.h"
#include "standalone/loaders/scene_format.h"

namespace standalone {

struct eAssimpOptions {
    // Frames a second; where it is left out the file's own rate counts, or else 30.
    std::optional<double> fps{};
    // Path in code page 1251: makes a model of a file without properties (as_model.h), and names unique.
    std::string asModel{};
    // Folders where pictures are looked for that are not where the file says, UTF-8.
    std::vector<std::string> texturePaths{};
    // The import library is tried in a copy of the process first: false for whoever watches over it
    // otherwise.
    bool isTried = true;
};

// Reads an FBX file, or one of its kin, into a scene. `pathUtf8` is the file's absolute path as the operating
// system spells it: pictures and material libraries are looked for beside it. A file that the import library
// can't read, or falls over, is a problem. A program built without the library says so.
eLoadResult ImportWithAssimp(const std::string& pathUtf8, std::string_view bytes, eSceneFormat format,
                             const eAssimpOptions& options);

}  // namespace standalone
