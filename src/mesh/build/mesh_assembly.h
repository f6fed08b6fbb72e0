#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "geometry/export_vertex.h"

class Export;
struct eExportBone;

// A triangle of welded vertices.
using eTriangle = std::array<std::uint16_t, 3>;

// The face soup of a bone with its corners welded.
struct eMeshAssembly {
    std::vector<eExportVertex> vertices;          // in order of first use by a face
    std::vector<std::vector<eTriangle>> subsets;  // by the `index` of the entry in the material map
    std::size_t triangles = 0;                    // of all subsets
    VertexFormat format = 0;                      // the largest format of a face
    bool isCancelled = false;                     // the user stopped it; what was gathered so far stands
};

// Welds the corners of all faces and sorts the triangles by material and palette. Adds the materials to the
// run's material map, clears `colorsAllWhite` of the bone at the first colour that is not white, and leaves
// the vertices of a mesh animated by frames in the frame table, per frame in the welded numbering. `lit`:
// light is baked into the colours, so every normal is the z axis. `skinned`: the bone has palettes.
//
// Nothing is dropped before eVertexWeld::kMostVertices vertices have come together; a mesh with as many must
// not be written.
eMeshAssembly AssembleMesh(Export& run, int boneIndex, bool lit, bool skinned);
