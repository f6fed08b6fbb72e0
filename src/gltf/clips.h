#pragma once

#include "gltf/bone_nodes.h"
#include "gltf/mesh_nodes.h"

namespace gltf {

// Adds the clips, each under the name of its file, with what the entity definition says of it as extras.
//
// At a whole frame every bone stands as the engine has it, each value carried forward from the frame that
// last stored it; between two frames that differ the viewer goes in a straight line. What is hidden has scale
// 0: of the node of the mesh, so that bones below stay. A skinned mesh can't be hidden so, and is warned of.
void AddClips(eGlb& glb, eModelFiles& files, const eBoneNodes& bones, const eMeshNodes& meshes,
              double framesPerSecond);

}  // namespace gltf
