#include "standalone/loaders/assimp/assimp_materials.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

#include "standalone/loaders/assimp/assimp_corners.h"

namespace standalone {
namespace {

constexpr std::size_t kDiffuseSlot = 1;
constexpr std::size_t kBumpSlot = 8;
constexpr float kMostExponent = 100;  // of a highlight, as far as the host's 0 to 1 reaches
constexpr int kFirstTextureChannel = 1;

// The library's kinds of textures and the slots of the host.
struct eSlotKind {
    aiTextureType type;
    std::size_t slot;
};
constexpr std::array<eSlotKind, 6> kSlots = {{
    {aiTextureType_AMBIENT, 0},
    {aiTextureType_DIFFUSE, kDiffuseSlot},
    {aiTextureType_SPECULAR, 2},
    {aiTextureType_SHININESS, 4},
    {aiTextureType_OPACITY, 6},
    {aiTextureType_HEIGHT, kBumpSlot},
}};
// What the library knows by the file's own name alone: the texture of a specular level.
constexpr const char* kSpecularLevelFile = "$raw.SpecularFactor|file";
constexpr std::size_t kSpecularLevelSlot = 3;

// Names of what the library puts where the file has no material.
constexpr std::array<std::string_view, 2> kStandIns = {AI_DEFAULT_MATERIAL_NAME, "%%%DEFAULT"};

constexpr std::array<std::pair<aiTextureType, ePhrase>, 4> kLostKinds = {{
    {aiTextureType_EMISSIVE, ePhrase::LostEmission},
    {aiTextureType_DISPLACEMENT, ePhrase::LostDisplacement},
    {aiTextureType_REFLECTION, ePhrase::LostReflection},
    {aiTextureType_METALNESS, ePhrase::LostMetalness},
}};

float Unit(float value) {
    return std::isfinite(value) ? std::clamp(value, 0.0F, 1.0F) : 0.0F;
}

host::Color ColorOf(const aiMaterial& source, const char* key, unsigned type, unsigned index,
                    const host::Color& otherwise) {
    aiColor3D color;
    return source.Get(key, type, index, color) == aiReturn_SUCCESS
               ? host::Color{Unit(color.r), Unit(color.g), Unit(color.b)}
               : otherwise;
}

float NumberOf(const aiMaterial& source, const char* key, unsigned type, unsigned index, float otherwise) {
    float number = 0;
    return source.Get(key, type, index, number) == aiReturn_SUCCESS && std::isfinite(number) ? number
                                                                                             : otherwise;
}

std::string NameOf(const aiMaterial& source) {
    aiString name;
    return source.Get(AI_MATKEY_NAME, name) == aiReturn_SUCCESS ? name.C_Str() : "";
}

eMapCoordinates CoordinatesOf(const aiMaterial& source, aiTextureType type) {
    eMapCoordinates coordinates;
    int channel = 0;
    if (source.Get(AI_MATKEY_UVWSRC(type, 0), channel) == aiReturn_SUCCESS && channel >= 0) {
        coordinates.channel = std::min(channel, AI_MAX_NUMBER_OF_TEXTURECOORDS - 1) + kFirstTextureChannel;
    }
    aiUVTransform transform;
    if (source.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform) == aiReturn_SUCCESS) {
        coordinates.offset = {transform.mTranslation.x, transform.mTranslation.y};
        coordinates.tiling = {transform.mScaling.x, transform.mScaling.y};
        coordinates.angle = transform.mRotation * static_cast<float>(180 / std::numbers::pi);
    }
    return coordinates;
}

}  // namespace

eAssimpMaterials::eAssimpMaterials(eAssimpImport& ownImport)
    : import(ownImport), pictures(ownImport), records(ownImport.file.mNumMaterials, -1) {
    std::vector<bool> isShown(records.size());
    for (const aiMesh* mesh : std::span(import.file.mMeshes, import.file.mNumMeshes)) {
        if (mesh->mMaterialIndex < isShown.size()) {
            isShown[mesh->mMaterialIndex] = true;
        }
    }
    for (std::size_t material = 0; material < records.size(); ++material) {
        const aiMaterial& source = *import.file.mMaterials[material];
        const std::string name = NameOf(source);
        if (isShown[material] && std::ranges::find(kStandIns, name) == kStandIns.end()) {
            records[material] = Make(source);
        }
    }
}

int eAssimpMaterials::Make(const aiMaterial& source) {
    eStandardMaterial standard;
    standard.ambient = ColorOf(source, AI_MATKEY_COLOR_AMBIENT, standard.ambient);
    standard.diffuse = ColorOf(source, AI_MATKEY_COLOR_DIFFUSE, standard.diffuse);
    standard.specular = ColorOf(source, AI_MATKEY_COLOR_SPECULAR, standard.specular);
    standard.shininess =
        Unit(NumberOf(source, AI_MATKEY_SHININESS, kMostExponent * standard.shininess) / kMostExponent);
    standard.shininessStrength = Unit(NumberOf(source, AI_MATKEY_SHININESS_STRENGTH, 0));
    standard.opacity = Unit(NumberOf(source, AI_MATKEY_OPACITY, 1));
    int isTwoSided = 0;
    standard.twoSided = source.Get(AI_MATKEY_TWOSIDED, isTwoSided) == aiReturn_SUCCESS && isTwoSided != 0;
    const std::string name = NameOf(source);
    for (const eSlotKind& kind : kSlots) {
        standard.maps[kind.slot].map = MakeMap(source, name, kind.type);
    }
    AddSpecularLevel(source, name, standard);
    AddNormals(source, name, standard);
    for (const auto& [type, what] : kLostKinds) {
        if (source.GetTextureCount(type) != 0) {
            import.report.CannotShow(what);
        }
    }
    return Add(
        name.empty() ? "material_" + std::to_string(import.scene.materials.size()) : import.report.Ansi(name),
        standard);
}

int eAssimpMaterials::MakeMap(const aiMaterial& source, const std::string& material, aiTextureType type) {
    aiString file;
    if (source.Get(AI_MATKEY_TEXTURE(type, 0), file) != aiReturn_SUCCESS || file.length == 0) {
        return -1;
    }
    return AddMap(file.C_Str(), material, CoordinatesOf(source, type));
}

int eAssimpMaterials::AddMap(const std::string& file, const std::string& material,
                             const eMapCoordinates& coordinates) {
    eMapData map;
    map.kind = pictures.Bitmap(file, material);
    map.coordinates = coordinates;
    const std::string& name = std::get<eBitmapMap>(map.kind).file;
    map.name = name.substr(name.find_last_of("/\\") + 1);
    import.scene.maps.push_back(std::move(map));
    return static_cast<int>(import.scene.maps.size()) - 1;
}

void eAssimpMaterials::AddSpecularLevel(const aiMaterial& source, const std::string& material,
                                        eStandardMaterial& standard) {
    aiString file;
    if (source.Get(kSpecularLevelFile, aiTextureType_UNKNOWN, 0, file) == aiReturn_SUCCESS &&
        file.length != 0) {
        standard.maps[kSpecularLevelSlot].map = AddMap(file.C_Str(), material, {});
    }
}

// A normal map takes the bump slot, whatever else the material has there.
void eAssimpMaterials::AddNormals(const aiMaterial& source, const std::string& material,
                                  eStandardMaterial& standard) {
    const int normal = MakeMap(source, material, aiTextureType_NORMALS);
    if (normal < 0) {
        return;
    }
    eMapData bump;
    bump.name = import.scene.maps[static_cast<std::size_t>(normal)].name;
    bump.coordinates = import.scene.maps[static_cast<std::size_t>(normal)].coordinates;
    bump.kind = eNormalBumpMap{normal};
    import.scene.maps.push_back(std::move(bump));
    standard.maps[kBumpSlot].map = static_cast<int>(import.scene.maps.size()) - 1;
}

int eAssimpMaterials::Add(const std::string& name, eMaterialKind kind) {
    import.scene.materials.push_back({ids.Take(name), name, std::move(kind)});
    return static_cast<int>(import.scene.materials.size()) - 1;
}

int eAssimpMaterials::OfNode(const eAssimpNode& node) {
    std::vector<int> parts;
    for (const aiMesh* mesh : TriangleMeshes(import, node)) {
        parts.push_back(mesh->mMaterialIndex < records.size() ? records[mesh->mMaterialIndex] : -1);
    }
    if (parts.empty() || std::ranges::adjacent_find(parts, std::ranges::not_equal_to()) == parts.end()) {
        return parts.empty() ? -1 : parts.front();
    }
    const auto [entry, isNew] = multis.try_emplace(parts, -1);
    if (isNew) {
        const std::string mesh = TriangleMeshes(import, node).front()->mName.C_Str();
        entry->second = Add(import.report.Ansi(mesh.empty() ? node.name : mesh), eMultiMaterial{parts});
    }
    return entry->second;
}

}  // namespace standalone
