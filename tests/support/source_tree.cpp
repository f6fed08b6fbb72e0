#include "support/source_tree.h"

#include <algorithm>
#include <string>
#include <system_error>

namespace support {

std::filesystem::path SourceTree() {
    return ZYR_SOURCE_TREE;
}

std::vector<std::filesystem::path> SceneFiles() {
    std::vector<std::filesystem::path> files;
    for (const char* folder : {"examples", "../shared/samples"}) {
        std::error_code missing;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(SourceTree() / folder, missing)) {
            const std::string name = entry.path().filename().string();
            if (entry.path().parent_path().filename() == "mistakes") {
                continue;
            }
            if (name.ends_with(".glb") || name.ends_with(".gltf") || name.ends_with(".scene.json")) {
                files.push_back(entry.path());
            }
        }
    }
    std::ranges::sort(files);
    return files;
}

}  // namespace support
