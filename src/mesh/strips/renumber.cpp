#include "mesh/strips/renumber.h"

#include <algorithm>
#include <memory>

eFinalMesh RenumberVertices(eSubMeshes& subMeshes, const std::vector<eExportVertex>& welded) {
    std::unique_ptr<ePrimitiveGroup[]> renumbered;
    RemapIndices(subMeshes.groups.data(), static_cast<std::uint16_t>(subMeshes.groups.size()),
                 static_cast<std::uint16_t>(welded.size()), renumbered);
    eFinalMesh mesh;
    mesh.vertices.reserve(welded.size());
    mesh.vertexRemap.resize(welded.size());
    for (std::size_t i = 0; i < subMeshes.list.size(); ++i) {
        const ePrimitiveGroup& before = subMeshes.groups[i];
        const ePrimitiveGroup& after = renumbered[i];
        eExportSubMesh& subMesh = subMeshes.list[i];
        subMesh.firstVertex = static_cast<std::uint16_t>(mesh.vertices.size());
        for (unsigned k = 0; k < before.numIndices; ++k) {
            if (after.indices[k] == mesh.vertices.size()) {
                mesh.vertices.push_back(welded[before.indices[k]]);
                mesh.vertexRemap[after.indices[k]] = before.indices[k];
            }
        }
        subMesh.vertexCount = static_cast<std::uint16_t>(mesh.vertices.size() - subMesh.firstVertex);
        mesh.indices.insert(mesh.indices.end(), after.indices.get(), after.indices.get() + after.numIndices);
    }
    return mesh;
}
