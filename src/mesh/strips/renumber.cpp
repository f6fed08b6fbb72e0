#include "mesh/strips/renumber.h"

#include <memory>

eFinalMesh RenumberVertices(eSubMeshes& subMeshes, std::size_t welded) {
    std::unique_ptr<ePrimitiveGroup[]> renumbered;
    RemapIndices(subMeshes.groups.data(), static_cast<std::uint16_t>(subMeshes.groups.size()),
                 static_cast<std::uint16_t>(welded), renumbered);
    eFinalMesh mesh;
    mesh.vertexRemap.resize(welded);
    for (std::size_t i = 0; i < subMeshes.list.size(); ++i) {
        const ePrimitiveGroup& before = subMeshes.groups[i];
        const ePrimitiveGroup& after = renumbered[i];
        eExportSubMesh& subMesh = subMeshes.list[i];
        subMesh.firstVertex = static_cast<std::uint16_t>(mesh.vertexCount);
        for (unsigned k = 0; k < before.numIndices; ++k) {
            if (after.indices[k] == mesh.vertexCount) {
                mesh.vertexRemap[mesh.vertexCount++] = before.indices[k];
            }
        }
        subMesh.vertexCount = static_cast<std::uint16_t>(mesh.vertexCount - subMesh.firstVertex);
        mesh.indices.insert(mesh.indices.end(), after.indices.get(), after.indices.get() + after.numIndices);
    }
    return mesh;
}
