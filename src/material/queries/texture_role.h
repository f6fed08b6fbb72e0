#pragma once

namespace host {
class Mtl;
class Texmap;
}  // namespace host

// What a texture map is in its material, which settles what becomes of it. Worked out from the material as
// the map holds it, without a look inside a Sorrel material.
struct eTextureRole {
    bool isBump = false;      // the material's bump map
    bool isNormal = false;    // a bump map that holds normals, not heights
    bool isSpecular = false;  // the material's specular level map
    float bumpAmount = 0;
    float specularAmount = 0;

    bool operator==(const eTextureRole&) const = default;
};

eTextureRole RoleOf(host::Mtl* material, const host::Texmap* map);
