#pragma once

#include "material/queries/texture_slot.h"

// What a texture map is in its slot, which settles what becomes of it. Worked out from the material as the
// map holds it, without a look inside a Sorrel material.
struct eTextureRole {
    bool isBump = false;      // the material's bump map, which has an amount above 0
    bool isNormal = false;    // a bump map that holds normals, not heights
    bool isSpecular = false;  // the material's specular level map
    float bumpAmount = 0;
    float specularAmount = 0;

    bool operator==(const eTextureRole&) const = default;
};

eTextureRole RoleOf(host::Mtl* material, const eSlotTexmap& slot);
