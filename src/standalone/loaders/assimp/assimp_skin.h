#pragma once

#include <optional>

#include "standalone/loaders/assimp/assimp_corners.h"

namespace standalone {

// The nodes that deform the node's meshes, by the first node of each name.
std::vector<int> BonesOf(const eAssimpImport& import, const eAssimpNode& node);

// The skin of a node's mesh, with all influences; nothing without bones. Bones that are no nodes of the file
// are told and left out.
std::optional<eSkinModifier> MakeAssimpSkin(eAssimpImport& import, int node,
                                            const std::vector<const aiMesh*>& meshes,
                                            const eAssimpVertices& vertices);

}  // namespace standalone
