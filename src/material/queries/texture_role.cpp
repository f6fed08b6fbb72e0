#include "material/queries/texture_role.h"

#include "material/queries/material_queries.h"

eTextureRole RoleOf(host::Mtl* material, const host::Texmap* map) {
    eTextureRole role;
    if (map == nullptr) {
        return role;
    }
    role.isBump = map == SubTexmap(material, host::kBumpMap);
    role.isNormal = role.isBump && map->ClassID() == host::kNormalBumpClass;
    role.isSpecular = map == SubTexmap(material, host::kSpecularLevelMap);
    role.bumpAmount = role.isBump ? GetBumpAmount(material) : 0;
    role.specularAmount = role.isSpecular ? GetSpecularAmount(material) : 0;
    return role;
}
