#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mesh/strips/sub_mesh.h"

// The numbers of a mesh as the file holds it. A vertex is in the file if a triangle uses it.
struct eFinalMesh {
    std::size_t vertexCount = 0;
    // By final vertex number, in order of first use, the number among the welded vertices; 0 behind the last
    // one. As long as the welded list.
    std::vector<std::uint16_t> vertexRemap;
    std::vector<std::uint16_t> indices;  // three per triangle, sub-mesh after sub-mesh
};

// Renumbers the welded vertices, of which there are `welded`, in order of first use and gives each sub-mesh
// its range of them: sub-meshes share no vertex, so the ranges are whole.
eFinalMesh RenumberVertices(eSubMeshes& subMeshes, std::size_t welded);
