#pragma once

#include <set>
#include <string>

#include "standalone/loaders/gltf_import.h"

namespace standalone {

// Where the pixels of the file's images are. Images in files stay there; those that the file embeds are
// written to a temporary folder of the scene when they are first asked for.
class eGltfImages {
public:
    explicit eGltfImages(eGltfImport& ownImport);

    // The bitmap of an image. A failure to write it is a problem.
    eBitmapMap Bitmap(int image);

private:
    eBitmapMap InFile(const std::string& uri);
    eBitmapMap Embedded(int image);
    std::string FileName(int image, std::span<const std::uint8_t> content);
    void Write(const std::string& name, std::span<const std::uint8_t> content, const std::string& place);

    eGltfImport& import;
    std::vector<std::optional<eBitmapMap>> bitmaps;  // by image
    std::set<std::string> takenNames;                // lower case
};

}  // namespace standalone
