#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "gltf/pictures.h"
#include "inspect/sdl_tree.h"
#include "written/written_file.h"

namespace gltf {

// How a sub-mesh shows its material.
struct eMaterialLook {
    bool isTwoSided = false;
    bool isLit = true;  // else the light is in the colours of its vertices
};

// The engine's materials as those of glTF: a rough surface that is no metal, with the first picture as its
// colour, the normal map, and the specular level where the file has one. What glTF can't say (a second layer,
// an environment, adding and subtracting) stands in the extras in the engine's words.
class eMaterials {
public:
    eMaterials(eGlb& glb, ePictures& pictures, std::vector<eBilingual>& warnings)
        : glb_(glb), pictures_(pictures), warnings_(warnings) {}

    // True if the folder's file has it.
    bool Has(const written::ePlacedName& place) { return BlockOf(place) != nullptr; }
    // The number of the material. `problem` tells of a broken file.
    int Material(const written::ePlacedName& place, const eMaterialLook& look, eBilingual& problem);
    bool HasNormalMap(int material) { return glb_.At("materials", material).contains("normalTexture"); }

private:
    struct eFile {
        inspect::eSdlBlock text;
        eBilingual problem;
    };
    eFile& FileIn(const eName& folder);
    const inspect::eSdlBlock* BlockOf(const written::ePlacedName& place);
    eJson Describe(const eName& folder, const inspect::eSdlBlock& block);
    void AddBlend(const inspect::eSdlBlock& block, eJson& material) const;
    void AddSpecular(const eName& folder, const inspect::eSdlBlock& block, eJson& material);

    eGlb& glb_;
    ePictures& pictures_;
    std::vector<eBilingual>& warnings_;
    std::map<eName, eFile> files_;
    std::map<std::string, int> materials_;  // by path, name and look
};

}  // namespace gltf
