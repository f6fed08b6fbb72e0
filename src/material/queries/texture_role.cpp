#include "material/queries/texture_role.h"

#include "material/queries/material_queries.h"

eTextureRole RoleOf(host::Mtl* material, const eSlotTexmap& slot) {
    eTextureRole role;
    if (slot.map == nullptr) {
        return role;
    }
    role.isBump = slot.use == eSlotUse::Bump && slot.map == SubTexmap(material, host::kBumpMap);
    role.isNormal = role.isBump && slot.map->ClassID() == host::kNormalBumpClass;
    role.isSpecular =
        slot.use == eSlotUse::SpecularLevel && slot.map == SubTexmap(material, host::kSpecularLevelMap);
    role.bumpAmount = role.isBump ? GetBumpAmount(material) : 0;
    role.specularAmount = role.isSpecular ? GetSpecularAmount(material) : 0;
    return role;
}
