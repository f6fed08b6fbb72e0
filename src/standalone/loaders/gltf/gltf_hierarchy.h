#pragma once

#include <vector>

#include "standalone/loaders/gltf/file/gltf_model.h"
#include "standalone/loaders/shared/import_report.h"

namespace standalone {

// The tree of the nodes that are shown, by their numbers in the file.
struct eGltfHierarchy {
    int scene = -1;            // the scene shown, -1 where the file has none and shows all its nodes
    std::vector<int> parents;  // of every node of the file, -1 for a root
    std::vector<int> roots;    // of the scene
    std::vector<int> order;    // the nodes of the scene, depth first, without carriers
    // By node, the node below that only carries its mesh (gltf_mesh_carriers.h), -1 for none.
    std::vector<int> carriers;
};

// Nodes that are their own ancestors, have two parents, or lie too deep for whoever walks trees by recursion,
// are problems; the hierarchy is good only without them.
eGltfHierarchy ReadGltfHierarchy(const tinygltf::Model& model, eImportReport& report);

}  // namespace standalone
