#pragma once

#include <cstdint>
#include <vector>

#include "geometry/export_vertex.h"
#include "mesh/strips/sub_mesh.h"

// A mesh as the file holds it.
struct eFinalMesh {
    std::vector<eExportVertex> vertices;  // those that a triangle uses, in order of first use
    std::vector<std::uint16_t> indices;   // three per triangle, sub-mesh after sub-mesh
    // By final vertex number, the number among the welded vertices; 0 behind the last one. As long as the
    // welded list.
    std::vector<std::uint16_t> vertexRemap;
};

// Renumbers the welded vertices in order of first use and gives each sub-mesh its range of them: sub-meshes
// share no vertex, so the ranges are whole.
eFinalMesh RenumberVertices(eSubMeshes& subMeshes, const std::vector<eExportVertex>& welded);
