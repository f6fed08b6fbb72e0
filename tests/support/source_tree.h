// Where the examples and other files of the source tree lie when tests run.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace support {

inline std::filesystem::path SourceTree() {
    return ZYR_SOURCE_TREE;
}

// All scenes of the examples and, where they lie beside the source tree, of the samples.
inline std::vector<std::filesystem::path> SceneFiles() {
    std::vector<std::filesystem::path> files;
    for (const char* folder : {"examples", "../shared/samples"}) {
        std::error_code missing;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(SourceTree() / folder, missing)) {
            const std::string name = entry.path().filename().string();
            if (name.ends_with(".glb") || name.ends_with(".gltf") || name.ends_with(".scene.json")) {
                files.push_back(entry.path());
            }
        }
    }
    std::ranges::sort(files);
    return files;
}

}  // namespace support
