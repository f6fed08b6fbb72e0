#include "mesh/read/face_material.h"

#include <algorithm>
#include <utility>

#include "material/queries/mapping_channels.h"
#include "material/queries/material_queries.h"
#include "mesh/read/corner_color.h"
#include "run/export.h"

namespace {

host::Texmap* LayerMap(const host::Mtl& leaf, int layer) {
    return layer < leaf.NumSubMtls() ? SubTexmap(leaf.GetSubMtl(layer), host::kDiffuseMap) : nullptr;
}

host::Texmap* InputOf(const host::Texmap& map, int input) {
    return input < map.NumSubTexmaps() ? map.GetSubTexmap(input) : nullptr;
}

}  // namespace

eFaceMaps ChooseFaceMaps(host::Mtl* leaf) {
    // A wrapped material has the layers of the one inside, as its textures have.
    leaf = WithoutSorrel(leaf);
    if (leaf == nullptr) {
        return {};
    }
    if (leaf->ClassID() == host::kTwoLayerClass) {
        return {.first = LayerMap(*leaf, 0), .second = LayerMap(*leaf, 1)};
    }
    host::Texmap* diffuse = SubTexmap(leaf, host::kDiffuseMap);
    if (GetBumpAmount(leaf) != 0) {
        return {.first = diffuse, .second = SubTexmap(leaf, host::kBumpMap)};
    }
    if (GetSpecularAmount(leaf) != 0) {
        return {.first = diffuse, .second = SubTexmap(leaf, host::kSpecularLevelMap)};
    }
    if (diffuse != nullptr && diffuse->ClassID() == host::kMixClass) {
        host::Texmap* blend = InputOf(*diffuse, 2);
        return {.first = InputOf(*diffuse, 0),
                .second = InputOf(*diffuse, 1),
                .blend = blend,
                .vertexBlended = blend != nullptr && blend->ClassID() == host::kVertexColorMapClass};
    }
    if (diffuse != nullptr && diffuse->ClassID() == host::kRgbMultiplyClass) {
        return {.first = InputOf(*diffuse, 0), .second = InputOf(*diffuse, 1)};
    }
    return {.first = diffuse};
}

eFaceMaterial& eFaceMaterials::EntryOf(const host::Face& face) {
    const std::size_t id = face.getMatID();
    if (id >= byId_.size()) {
        byId_.resize(id + 1);
    }
    std::unique_ptr<eFaceMaterial>& entry = byId_[id];
    if (entry != nullptr) {
        return *entry;
    }
    host::Mtl* leaf = LeafMaterial(material_, face.getMatID());
    const eFaceMaps maps = ChooseFaceMaps(leaf);
    const float opacity = leaf != nullptr ? 1 - leaf->GetXParency(0, false) : 1.0F;
    entry = std::make_unique<eFaceMaterial>(
        eFaceMaterial{.leaf = leaf,
                      .maps = maps,
                      .first = eFaceMapCoords(mesh_, maps.first, true),
                      .second = eFaceMapCoords(mesh_, maps.second, true),
                      .blend = eFaceMapCoords(mesh_, maps.blend, false),
                      .opacity = opacity,
                      .plainColor = PackColor({1, 1, 1}, opacity),
                      .number = count_++,
                      .worldMaps = CheckMappingChannels(run_, material_, face)});
    return *entry;
}

void eFaceMaterials::TellWorldMaps(const host::INode& node) const {
    std::vector<std::pair<const host::Texmap*, int>> counts;
    for (const std::unique_ptr<eFaceMaterial>& entry : byId_) {
        if (entry == nullptr) {
            continue;
        }
        for (const host::Texmap* map : entry->worldMaps) {
            const auto known = std::ranges::find(counts, map, &std::pair<const host::Texmap*, int>::first);
            (known != counts.end() ? *known : counts.emplace_back(map, 0)).second += entry->faces;
        }
    }
    for (const auto& [map, faces] : counts) {
        TellMappingChannel(*map, node, faces);
    }
}
