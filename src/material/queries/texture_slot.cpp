#include "material/queries/texture_slot.h"

#include "material/queries/material_queries.h"

namespace {

host::Mtl* SubMaterial(const host::Mtl& material, int index) {
    return index < material.NumSubMtls() ? material.GetSubMtl(index) : nullptr;
}

// A Mix, and then an RGB Multiply, is replaced by its layer.
host::Texmap* LayerOf(host::Texmap* map, int layer) {
    for (const host::ClassId& layered : {host::kMixClass, host::kRgbMultiplyClass}) {
        if (map != nullptr && map->ClassID() == layered) {
            map = layer < map->NumSubTexmaps() ? map->GetSubTexmap(layer) : nullptr;
        }
    }
    return map;
}

}  // namespace

eSlotTexmap GetSlotTexmap(host::Mtl* material, int slot) {
    host::Mtl* inner = WithoutSorrel(material);
    if (inner == nullptr) {
        return {};
    }
    host::Texmap* map = inner->ClassID() == host::kTwoLayerClass
                            ? SubTexmap(SubMaterial(*inner, slot), host::kDiffuseMap)
                            : LayerOf(SubTexmap(inner, host::kDiffuseMap), slot);
    host::Texmap* bump = SubTexmap(inner, host::kBumpMap);
    host::Texmap* specularLevel = SubTexmap(inner, host::kSpecularLevelMap);
    if (slot == 1 && bump != nullptr && GetBumpAmount(inner) > 0) {
        return {bump, eSlotUse::Bump};
    }
    if (slot >= 1 && specularLevel != nullptr) {
        return {specularLevel, eSlotUse::SpecularLevel};
    }
    return {map};
}
