// What the engine can't hold of an imported mesh is put right before the scene is exported.
#pragma once

#include "standalone/loaders/shared/import_report.h"
#include "standalone/scene_data.h"

namespace standalone {

// Leaves out the triangles without area: those with two corners at one vertex, and in a mesh that nothing
// deforms also those with two corners at one place. A mesh of nothing else becomes a helper. Told once with
// the numbers.
void DropFacesWithoutArea(eSceneData& scene, eImportReport& report);

// Parts each mesh of more than 65,534 vertices, as the exporter welds them, or of more than 65,535 triangles:
// halves it along the longest side of its box until all pieces fit. The pieces hang below the mesh's node,
// which keeps its place in the tree, and take over mesh, skin, vertex keys and what its properties say of the
// mesh. Volumes, zones, support points and meshes that are merged into others stay whole. Told once a mesh
// with the numbers.
void PartLargeMeshes(eSceneData& scene, eImportReport& report);

}  // namespace standalone
