#include "material/queries/material_queries.h"

#include <algorithm>

#include "scene/properties/node_name.h"

namespace {

using host::Mtl;
using host::StdMtl;
using host::Texmap;

// The channel number of the specular level map is asked by its own id.
constexpr int kSpecularLevelId = 4;

bool IsOfClass(const host::ReferenceTarget* element, const host::ClassId& classId) {
    return element != nullptr && element->ClassID() == classId;
}

const StdMtl* AsStandard(const Mtl* material) {
    return IsOfClass(material, host::kStandardClass) ? dynamic_cast<const StdMtl*>(material) : nullptr;
}

float MapAmount(Mtl* material, int subMap, int id) {
    const StdMtl* standard = AsStandard(WithoutSorrel(material));
    if (standard == nullptr || SubTexmap(standard, subMap) == nullptr) {
        return 0;
    }
    const int channel = standard->StdIDToChannel(id);
    return standard->MapEnabled(channel) ? standard->GetTexmapAmt(channel, 0) : 0;
}

std::uint32_t ColorByte(float channel) {
    return static_cast<std::uint32_t>(std::clamp(channel, 0.0F, 1.0F) * 255.0F + 0.5F);
}

}  // namespace

std::string GetMaterialName(const Mtl* material) {
    return material == nullptr ? "empty_material" : CleanNodeName(material->GetName(), false);
}

Mtl* WithoutSorrel(Mtl* material) {
    return IsOfClass(material, host::kSorrelClass) ? material->GetSubMtl(0) : material;
}

Texmap* SubTexmap(const Mtl* material, int index) {
    return material != nullptr && index >= 0 && index < material->NumSubTexmaps()
               ? material->GetSubTexmap(index)
               : nullptr;
}

bool IsTwoLayer(Mtl* material) {
    const Mtl* inner = WithoutSorrel(material);
    const Texmap* diffuse = SubTexmap(inner, host::kDiffuseMap);
    return IsOfClass(inner, host::kTwoLayerClass) || IsOfClass(diffuse, host::kMixClass) ||
           IsOfClass(diffuse, host::kRgbMultiplyClass);
}

bool IsMultiply(Mtl* material) {
    return IsOfClass(SubTexmap(WithoutSorrel(material), host::kDiffuseMap), host::kRgbMultiplyClass);
}

float GetBumpAmount(Mtl* material) {
    return MapAmount(material, host::kBumpMap, host::kBumpMap);
}

float GetSpecularAmount(Mtl* material) {
    return MapAmount(material, host::kSpecularLevelMap, kSpecularLevelId);
}

int GetSlotCount(Mtl* material) {
    return (IsTwoLayer(material) ? 2 : 1) + (GetSpecularAmount(material) > 0 ? 1 : 0) +
           (GetBumpAmount(material) > 0 ? 1 : 0);
}

std::uint32_t GetSpecularColor(Mtl* material) {
    const StdMtl* standard = AsStandard(WithoutSorrel(material));
    if (standard == nullptr) {
        return 0;
    }
    const host::Color color = standard->GetSpecular(0, false);
    const float shininess = std::clamp(standard->GetShininess(0, false), 0.0F, 1.0F);
    return static_cast<std::uint32_t>(shininess * 255.0F) << 24 | ColorByte(color.r) << 16 |
           ColorByte(color.g) << 8 | ColorByte(color.b);
}

Mtl* LeafMaterial(Mtl* material, std::uint32_t materialId) {
    // Deeper than any artist nests them: multi materials that contain each other have no leaf.
    constexpr int kMaxDepth = 64;
    for (int depth = 0; material != nullptr && material->IsMultiMtl(); ++depth) {
        if (depth == kMaxDepth) {
            return nullptr;
        }
        const auto count = static_cast<std::uint32_t>(std::max(material->NumSubMtls(), 1));
        material = material->GetSubMtl(static_cast<int>(materialId % count));
    }
    return material;
}
