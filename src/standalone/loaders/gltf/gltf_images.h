#pragma once

#include <optional>
#include <vector>

#include "standalone/loaders/gltf/gltf_import.h"
#include "standalone/loaders/shared/picture_files.h"

namespace standalone {

// The kind of an image that is of a kind that isn't read, by what the file says of it: "image/webp"; empty
// for all others.
std::string UnreadKind(const tinygltf::Image& image);

// Where the pixels of the file's images are. Images in files stay there, unless code page 1251 can't hold
// their name; those, and the images that the file embeds, are written to a temporary folder of the scene when
// they are first asked for.
class eGltfImages {
public:
    explicit eGltfImages(eGltfImport& ownImport);

    // The bitmap of an image. A failure to write it is a problem.
    eBitmapMap Bitmap(int image);

private:
    eBitmapMap InFile(int image);
    eBitmapMap Embedded(int image);

    eGltfImport& import;
    ePictureFiles files;
    std::vector<std::optional<eBitmapMap>> bitmaps;  // by image
};

}  // namespace standalone
