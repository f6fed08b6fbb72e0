#pragma once

#include <string>
#include <string_view>

namespace standalone {

// What a node's property text says of its mesh (Poly, Layer, NoCastShadows and the like): the lines that go
// with the mesh where it moves to nodes below.
std::string MeshLines(std::string_view properties);

// The text of the node that the mesh has left: without the wish for a mesh.
std::string WithoutMesh(std::string_view properties);

// Whether the text makes the mesh a volume, zone, point or common mesh, which has to stay at its node.
bool IsBoundToNode(std::string_view properties);

}  // namespace standalone
