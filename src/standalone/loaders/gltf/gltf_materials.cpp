#include "standalone/loaders/gltf/gltf_materials.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "standalone/loaders/gltf/file/gltf_json.h"
#include "standalone/loaders/gltf/gltf_textures.h"
#include "standalone/loaders/gltf/shapes/gltf_corners.h"

namespace standalone {
namespace {

constexpr std::size_t kDiffuseSlot = 1;
constexpr std::size_t kBumpSlot = 8;

float Unit(double number) {
    return static_cast<float>(std::clamp(number, 0.0, 1.0));
}

bool IsWhite(const std::vector<double>& color) {
    return color[0] == 1 && color[1] == 1 && color[2] == 1;
}

int BlendOf(const std::string& alphaMode) {
    constexpr int kAutomatic = -1, kTest = 1, kBlend = 2;
    return alphaMode == "MASK" ? kTest : alphaMode == "BLEND" ? kBlend : kAutomatic;
}

// The parameters of the wrapper; nothing where neither alpha mode nor extras ask for one.
std::optional<eSorrelMaterial> WrapperOf(const eJsonTree& json, eJsonIndex entry,
                                         const std::string& alphaMode) {
    constexpr std::array<std::string_view, 4> kKeys = {"blend", "modulate2x", "environment", "strength"};
    std::array<std::optional<double>, 4> values;
    std::ranges::transform(kKeys, values.begin(),
                           [&](std::string_view key) { return ExtraNumber(json, entry, key); });
    if (BlendOf(alphaMode) < 0 &&
        std::ranges::none_of(values, [](const auto& value) { return value.has_value(); })) {
        return std::nullopt;
    }
    const auto whole = [](double number) { return static_cast<int>(std::clamp(number, -1e9, 1e9)); };
    eSorrelMaterial wrapper;
    wrapper.blend = whole(values[0].value_or(BlendOf(alphaMode)));
    wrapper.modulate2x = whole(values[1].value_or(0));
    wrapper.environment = whole(values[2].value_or(0));
    wrapper.strength = static_cast<float>(values[3].value_or(0));
    return wrapper;
}

bool NamesFirst(const tinygltf::Value& variants) {
    for (int i = 0; i < static_cast<int>(variants.ArrayLen()); ++i) {
        if (variants.Get(i).GetNumberAsInt() == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

eGltfMaterials::eGltfMaterials(eGltfImport& ownImport)
    : import(ownImport), images(ownImport), meshRecords(import.model.meshes.size()) {}

void eGltfMaterials::MakeAll() {
    const std::vector<eJsonIndex> entries = GltfEntries(import.json, "materials");
    for (std::size_t material = 0; material < import.model.materials.size(); ++material) {
        records.push_back(Make(material, entries[material]));
    }
}

int eGltfMaterials::Make(std::size_t material, eJsonIndex entry) {
    const tinygltf::Material& source = import.model.materials[material];
    const std::string name =
        source.name.empty() ? "material_" + std::to_string(material) : import.report.Ansi(source.name);
    NoticeLosses(source);
    std::optional<eSorrelMaterial> wrapper = WrapperOf(import.json, entry, source.alphaMode);
    if (!wrapper) {
        return MakeStandard(source, name);
    }
    wrapper->material = MakeStandard(source, name);
    return Add(name + "_sorrel", name, *wrapper);
}

int eGltfMaterials::MakeStandard(const tinygltf::Material& source, const std::string& name) {
    const tinygltf::PbrMetallicRoughness& surface = source.pbrMetallicRoughness;
    const std::vector<double>& color = surface.baseColorFactor;
    eStandardMaterial standard;
    standard.diffuse = {Unit(color[0]), Unit(color[1]), Unit(color[2])};
    standard.opacity = Unit(color[3]);
    standard.twoSided = source.doubleSided;
    if (surface.baseColorTexture.index >= 0) {
        standard.maps[kDiffuseSlot].map = MakeGltfTexture(import, images, surface.baseColorTexture, name);
    }
    if (source.normalTexture.index >= 0) {
        if (const int normal = MakeGltfTexture(import, images, source.normalTexture, name); normal >= 0) {
            eMapData bump{
                import.scene.maps[static_cast<std::size_t>(normal)].name, {}, eNormalBumpMap{normal}};
            bump.coordinates = import.scene.maps[static_cast<std::size_t>(normal)].coordinates;
            import.scene.maps.push_back(std::move(bump));
            standard.maps[kBumpSlot] = {static_cast<int>(import.scene.maps.size()) - 1,
                                        static_cast<float>(source.normalTexture.scale), true};
        }
    }
    return Add(name, name, standard);
}

int eGltfMaterials::Add(const std::string& id, const std::string& name, eMaterialKind kind) {
    import.scene.materials.push_back({ids.Take(id), name, std::move(kind)});
    return static_cast<int>(import.scene.materials.size()) - 1;
}

void eGltfMaterials::NoticeLosses(const tinygltf::Material& source) {
    const auto lose = [&](bool isLost, ePhrase what) {
        if (isLost) {
            import.report.CannotShow(what);
        }
    };
    const tinygltf::PbrMetallicRoughness& surface = source.pbrMetallicRoughness;
    const auto& glow = source.emissiveFactor;
    lose(source.occlusionTexture.index >= 0, ePhrase::LostOcclusion);
    lose(
        source.emissiveTexture.index >= 0 || std::ranges::any_of(glow, [](double part) { return part != 0; }),
        ePhrase::LostEmission);
    lose(surface.metallicRoughnessTexture.index >= 0, ePhrase::LostMetalness);
    lose(surface.baseColorTexture.index >= 0 && !IsWhite(surface.baseColorFactor), ePhrase::LostTint);
    lose(source.alphaMode == "MASK" && source.alphaCutoff != 0.5, ePhrase::LostCutOff);
}

int eGltfMaterials::MaterialOf(const tinygltf::Primitive& primitive) {
    const auto variants = primitive.extensions.find("KHR_materials_variants");
    if (variants == primitive.extensions.end()) {
        return primitive.material;
    }
    import.report.CannotShow(ePhrase::LostVariants);
    const tinygltf::Value& mappings = variants->second.Get("mappings");
    for (int i = 0; i < static_cast<int>(mappings.ArrayLen()); ++i) {
        const tinygltf::Value& mapping = mappings.Get(i);
        if (NamesFirst(mapping.Get("variants"))) {
            return mapping.Get("material").GetNumberAsInt();
        }
    }
    return primitive.material;
}

int eGltfMaterials::OfMesh(int mesh) {
    std::optional<int>& record = meshRecords[static_cast<std::size_t>(mesh)];
    if (record) {
        return *record;
    }
    const tinygltf::Mesh& source = import.model.meshes[static_cast<std::size_t>(mesh)];
    eMultiMaterial multi;
    for (const tinygltf::Primitive& primitive : source.primitives) {
        if (TopologyOf(primitive) == eGltfTopology::Triangles && primitive.attributes.contains("POSITION")) {
            const int material = MaterialOf(primitive);
            multi.materials.push_back(material < 0 ? -1 : records[static_cast<std::size_t>(material)]);
        }
    }
    const bool hasOne =
        std::ranges::adjacent_find(multi.materials, std::ranges::not_equal_to()) == multi.materials.end();
    if (hasOne) {
        record = multi.materials.empty() ? -1 : multi.materials.front();
    } else {
        const std::string name =
            source.name.empty() ? "mesh_" + std::to_string(mesh) : import.report.Ansi(source.name);
        record = Add(name, name, std::move(multi));
    }
    return *record;
}

}  // namespace standalone
