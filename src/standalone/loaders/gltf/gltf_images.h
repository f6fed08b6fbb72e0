#pragma once

#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/io_status.h"
#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// Where the pixels of the file's images are. Images in files stay there, unless code page 1251 can't hold
// their path; those, and the images that the file embeds, are written to a temporary folder of the scene when
// they are first asked for.
class eGltfImages {
public:
    explicit eGltfImages(eGltfImport& ownImport);

    // The bitmap of an image. A failure to write it is a problem.
    eBitmapMap Bitmap(int image);

private:
    eBitmapMap InFile(int image);
    eBitmapMap Embedded(int image);
    eBitmapMap InTemporaryFile(int image, const std::string& imageName, std::span<const std::uint8_t> content,
                               const std::string& origin);
    std::string FileName(const std::string& imageName, std::string_view extension);
    platform::eIoStatus Write(const std::string& name, std::span<const std::uint8_t> content,
                              const std::string& origin);

    eGltfImport& import;
    std::vector<std::optional<eBitmapMap>> bitmaps;  // by image
    std::set<std::string> takenNames;                // lower case
};

}  // namespace standalone
