#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "gltf/glb.h"
#include "io/name.h"
#include "messages/phrase.h"
#include "texture/pixel_image.h"

namespace gltf {

// What of a picture a material of glTF asks for.
enum class ePictureUse {
    Color,
    // The engine keeps x of a normal in alpha and y in green, which grows with v: downwards.
    Normals,
    // A grey level, which glTF wants in alpha.
    Specular,
};

// The pictures of a model as png within the file, each once for a use.
class ePictures {
public:
    // `commonFolder`: of pictures whose names begin with "$/"; where it is empty, texture/common in the
    // nearest folder above that has it.
    ePictures(eGlb& glb, eName commonFolder, std::vector<eBilingual>& warnings)
        : glb_(glb), commonFolder_(std::move(commonFolder)), warnings_(warnings) {}

    // The texture of a picture that a material in the folder names, -1 for one that can't be had: that is
    // warned of.
    int Texture(const eName& folder, const std::string& picture, ePictureUse use);

private:
    std::optional<eName> FileOf(const eName& folder, const std::string& picture) const;
    eName CommonFolder(const eName& folder) const;
    int Embed(const eName& file, const std::string& picture, ePictureUse use);
    int Warn(const std::string& picture, ePhrase what);

    eGlb& glb_;
    eName commonFolder_;
    std::vector<eBilingual>& warnings_;
    std::map<ePictureUse, std::map<std::string, int>> textures_;  // by path
};

}  // namespace gltf
