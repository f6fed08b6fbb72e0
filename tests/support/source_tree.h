// Where the examples and other files of the source tree lie when tests run.
#pragma once

#include <filesystem>
#include <vector>

namespace support {

std::filesystem::path SourceTree();

// All scenes of the examples and, where they lie beside the source tree, of the samples; not those
// that are there for their mistakes.
std::vector<std::filesystem::path> SceneFiles();

}  // namespace support
