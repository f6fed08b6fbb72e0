#pragma once

#include "gltf/frame_shapes.h"
#include "gltf/glb.h"
#include "mesh/file/mesh_reader.h"

namespace gltf {

// True if the light of a sub-mesh is baked into its colours: the export writes the same normal for all of its
// vertices then.
bool HasBakedLight(const eFileMesh& mesh, const eFileSubMesh& subMesh);

// A sub-mesh as a primitive: vertices and triangles as the file has them, of a skin the bones of each vertex
// as numbers of joints (0 the mesh's own bone, n the n-th bone of the skin), the shapes as targets. Without a
// material. The mesh must have passed CheckMesh, and the sub-mesh have triangles.
eJson MakePrimitive(eGlb& glb, const eFileMesh& mesh, const eFileSubMesh& subMesh, const eMeshShapes* shapes,
                    bool hasTangents);

}  // namespace gltf
