#pragma once

#include <vector>

#include "standalone/loaders/gltf/shapes/gltf_vertices.h"

namespace standalone {

// The triangles as one host mesh in the host's axes: a material id per primitive, normals as specified
// normals, colours as the channels 0 and -2, sets of coordinates as the channels from 1 on with v upward.
host::Mesh MakeGltfMesh(eImportReport& report, const eGltfAccessors& accessors,
                        const eGltfVertices& vertices);

// Per morph target, by how much it moves each vertex of the mesh, in the host's axes.
std::vector<std::vector<host::Point3>> ReadGltfTargets(eImportReport& report, const eGltfVertices& vertices);

}  // namespace standalone
