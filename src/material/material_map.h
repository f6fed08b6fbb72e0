#pragma once

#include <map>

#include "host/material.h"

namespace host {
class INode;
}  // namespace host

// A material in use, with the palette of the sub-mesh that uses it; group 0 for a mesh without skin.
struct eExportMaterialKey {
    host::Mtl* material = nullptr;
    int group = 0;
};

// By the identity of the material, then by group.
struct eExportMaterialKeyLess {
    bool operator()(const eExportMaterialKey& a, const eExportMaterialKey& b) const {
        if (a.material != b.material) {
            return host::IdentityLess()(a.material, b.material);
        }
        return a.group < b.group;
    }
};

struct eExportMaterialUse {
    float sizeU = 0;  // rough size of a generated texture in texels
    float sizeV = 0;
    int index = 0;                      // the number of entries that the map had when this one was added
    int materialId = 0;                 // of the first face that used the key
    const host::INode* node = nullptr;  // of the mesh that used the key first
};

using eExportMaterialMap = std::map<eExportMaterialKey, eExportMaterialUse, eExportMaterialKeyLess>;
