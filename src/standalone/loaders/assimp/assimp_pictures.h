#pragma once

#include <string>
#include <unordered_map>

#include "standalone/loaders/assimp/assimp_import.h"
#include "standalone/loaders/shared/picture_files.h"

namespace standalone {

// Finds the pictures that a file names, or has inside.
class eAssimpPictures {
public:
    explicit eAssimpPictures(eAssimpImport& ownImport);

    // The bitmap of a texture as the file names it, UTF-8. One that lies in the file is written to a
    // temporary folder. One in a file of its own is looked for where the name says, then beside the scene,
    // then in the texture paths, under its path and under its bare name; one that is nowhere is told with the
    // material and all places, and keeps the name.
    eBitmapMap Bitmap(const std::string& name, const std::string& material);

private:
    eBitmapMap Find(const std::string& name, const std::string& material);
    eBitmapMap Embedded(const aiTexture& texture, const std::string& name);
    std::string NameFromScene(const std::string& place) const;
    std::vector<std::string> PlacesOf(const std::string& name) const;

    eAssimpImport& import;
    ePictureFiles files;
    std::unordered_map<std::string, eBitmapMap> known;  // by name
};

}  // namespace standalone
