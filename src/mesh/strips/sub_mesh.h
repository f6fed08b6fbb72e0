#pragma once

#include <cstdint>
#include <vector>

#include "mesh/build/mesh_assembly.h"
#include "mesh/strips/strip_generator.h"

class Export;
struct eExportBone;

namespace host {
class Mtl;
}  // namespace host

// Bits of eExportSubMesh::flags.
inline constexpr std::uint16_t kSubMeshTwoSided = 0x0001;
inline constexpr std::uint16_t kSubMeshSkinned = 0x0002;

// The triangles of one material with one palette. The first six fields are what the file holds.
struct eExportSubMesh {
    std::uint16_t format = 0;         // low half of its vertices' format
    std::uint16_t firstTriangle = 0;  // triangles of the sub-meshes before it
    std::uint16_t triangleCount = 0;
    std::uint16_t firstVertex = 0;  // lowest vertex number that it uses
    std::uint16_t vertexCount = 0;  // from the lowest to the highest one
    std::uint16_t flags = 0;
    host::Mtl* material = nullptr;
    int palette = 0;
};

// The sub-meshes of a mesh, each with its triangles in the order for the vertex cache.
struct eSubMeshes {
    std::vector<eExportSubMesh> list;
    std::vector<ePrimitiveGroup> groups;  // parallel to `list`
    bool lostTriangles = false;           // degenerate or repeated ones were left out
};

// Makes the sub-meshes by the names of their materials, so that their order hangs on nothing that changes
// from run to run. firstVertex and vertexCount stay 0 (renumber.h). A subset that the strip generator gives
// nothing for is told and left out.
eSubMeshes BuildSubMeshes(Export& run, const eExportBone& bone, const eMeshAssembly& assembly, bool skinned);
