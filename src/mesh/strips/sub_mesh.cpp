#include "mesh/strips/sub_mesh.h"

#include <algorithm>
#include <string>
#include <utility>

#include "io/name.h"
#include "material/queries/material_queries.h"
#include "material/run_materials.h"
#include "mesh/strips/cache_statistics.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/export_bone.h"

namespace {

// The material map's entries that this mesh uses, by material name; equal names stay in the order of the map.
std::vector<const eExportMaterialMap::value_type*> OrderByName(const Export& run,
                                                               const eMeshAssembly& assembly) {
    std::vector<std::pair<std::string, const eExportMaterialMap::value_type*>> named;
    for (const auto& entry : run.materials->materialMap) {
        const auto index = static_cast<std::size_t>(entry.second.index);
        if (index < assembly.subsets.size() && !assembly.subsets[index].empty()) {
            named.emplace_back(eName(GetMaterialName(entry.first.material)).Text(), &entry);
        }
    }
    std::ranges::stable_sort(named, {},
                             &std::pair<std::string, const eExportMaterialMap::value_type*>::first);
    std::vector<const eExportMaterialMap::value_type*> ordered;
    for (const auto& [name, entry] : named) {
        ordered.push_back(entry);
    }
    return ordered;
}

// An empty group if there is nothing to draw.
ePrimitiveGroup OrderForCache(const std::vector<eTriangle>& triangles) {
    std::unique_ptr<ePrimitiveGroup[]> groups;
    std::uint16_t groupCount = 0;
    stripCacheSize = kTargetCacheSize;
    const auto indexCount = static_cast<unsigned>(triangles.size() * 3);
    if (!GenerateStrips(triangles.front().data(), indexCount, groups, groupCount, true)) {
        return {};
    }
    return std::move(groups[0]);
}

// Beside the box, which says neither where nor how much.
void TellLostTriangles(Export& run, const eExportBone& bone, const host::Mtl* material, std::size_t lost,
                       std::size_t all) {
    const std::string name = GetMaterialName(material);
    Tell(run, eMessageId::MeshLostTriangles, {.node = host::PathOf(*bone.node), .material = name},
         bone.node->GetName(), name, lost, all);
}

}  // namespace

eSubMeshes BuildSubMeshes(Export& run, const eExportBone& bone, const eMeshAssembly& assembly, bool skinned) {
    const VertexFormat absent = bone.colorsAllWhite ? VF_COLOR : 0;
    eSubMeshes result;
    unsigned firstTriangle = 0;
    for (const auto* entry : OrderByName(run, assembly)) {
        const auto& [key, use] = *entry;
        const std::vector<eTriangle>& triangles = assembly.subsets[static_cast<std::size_t>(use.index)];
        ePrimitiveGroup group = OrderForCache(triangles);
        const unsigned triangleCount = group.numIndices / 3;
        if (triangleCount < triangles.size()) {
            TellLostTriangles(run, bone, key.material, triangles.size() - triangleCount, triangles.size());
        }
        if (group.numIndices == 0) {
            ShowAs(MakeMessage(eMessageId::StripsFailed,
                               {.node = host::PathOf(*bone.node), .material = GetMaterialName(key.material)}),
                   {.title = "Error", .icon = platform::eBoxIcon::Stop, .parent = run.host->GetMAXHWnd()});
            continue;
        }
        result.lostTriangles |= triangleCount < triangles.size();
        const bool twoSided = (key.material->Requirements(-1) & host::Mtl::kTwoSided) != 0;
        const VertexFormat format = assembly.vertices[triangles.front()[0]].format & ~absent;
        result.list.push_back({.format = static_cast<std::uint16_t>(format),
                               .firstTriangle = static_cast<std::uint16_t>(firstTriangle),
                               .triangleCount = static_cast<std::uint16_t>(triangleCount),
                               .flags = static_cast<std::uint16_t>((twoSided ? kSubMeshTwoSided : 0) |
                                                                   (skinned ? kSubMeshSkinned : 0)),
                               .material = key.material,
                               .palette = key.group});
        result.groups.push_back(std::move(group));
        firstTriangle += triangleCount;
    }
    return result;
}
