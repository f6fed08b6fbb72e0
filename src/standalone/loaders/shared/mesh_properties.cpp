#include "standalone/loaders/shared/mesh_properties.h"

#include <algorithm>
#include <array>

#include "standalone/data/property_lines.h"
#include "standalone/data/property_reader.h"

namespace standalone {
namespace {

// What a property says of the mesh goes with it; what it says of the node stays with it.
constexpr std::array<const char*, 12> kMeshKeys = {
    "Poly",          "Layer",        "Color",  "Ground",  "DecalTarget", "NoGroupMesh",
    "NoCastShadows", "NoGetShadows", "NoSkin", "OldSkin", "AniTex",      "LODLastOff"};
constexpr std::array<const char*, 8> kWholeKeys = {"Volume", "Component", "SupportPoint", "Obstacle",
                                                   "Area",   "Body",      "Preview",      "CommonMesh"};

template <std::size_t Count>
bool HasAny(std::string_view properties, const std::array<const char*, Count>& keys) {
    const eUserProperties told(properties);
    return std::ranges::any_of(keys, [&](const char* key) { return told.Find(key).has_value(); });
}

}  // namespace

std::string MeshLines(std::string_view properties) {
    const eUserProperties told(properties);
    std::string lines;
    for (const char* key : kMeshKeys) {
        if (const auto value = told.Find(key)) {
            AppendPropertyLine(lines, value->empty() ? key : std::string(key) + "=" + std::string(*value));
        }
    }
    return lines;
}

std::string WithoutMesh(std::string_view properties) {
    std::string lines;
    while (!properties.empty()) {
        const std::string_view line = properties.substr(0, properties.find_first_of("\r\n"));
        properties.remove_prefix(std::min(line.size() + 1, properties.size()));
        if (!line.empty() && !eUserProperties(line).Find("Poly")) {
            AppendPropertyLine(lines, line);
        }
    }
    return lines;
}

bool IsBoundToNode(std::string_view properties) {
    return HasAny(properties, kWholeKeys);
}

}  // namespace standalone
