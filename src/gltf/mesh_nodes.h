#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "gltf/bone_nodes.h"
#include "gltf/frame_shapes.h"
#include "gltf/materials.h"

namespace gltf {

// A node that shows a mesh of a bone.
struct eMeshNode {
    int node = 0;
    int bone = 0;
    const eFileMesh* mesh = nullptr;
};

// What the bones show: a node below each bone for its mesh, named "hull mesh", and one for each further level
// of detail, which the first names through MSFT_lod and which hang on nothing, so that a viewer that does not
// know the extension shows the first level alone. A skinned mesh is bent where its joints are, so its node
// stands at the top of the scene.
class eMeshNodes {
public:
    eMeshNodes(eGlb& glb, eModelFiles& files, const eBoneNodes& bones, eMaterials& materials);

    // False, with the reason, for a broken file of materials.
    bool Add(eBoneNodes& bones, eBilingual& problem);

    const std::vector<eMeshNode>& All() const { return nodes_; }
    const std::vector<int>& AtTop() const { return atTop_; }
    const eFrameShapes& Shapes() const { return shapes_; }
    std::size_t Triangles() const { return triangles_; }

private:
    int MeshNode(int bone, const inspect::eSdlBlock& view, const std::string& reference, eBilingual& problem);
    int Mesh(const std::string& reference, const eFileMesh& mesh, eBilingual& problem);
    written::ePlacedName PlaceOf(const std::string& material, const eName& meshFolder);
    int Skin(int bone, const eFileMesh& mesh);
    void Place(eBoneNodes& bones, int bone, const std::vector<int>& levels);

    eGlb& glb_;
    eModelFiles& files_;
    const eBoneNodes& bones_;
    eMaterials& materials_;
    eFrameShapes shapes_;
    std::map<const eFileMesh*, int> meshes_;
    std::vector<eMeshNode> nodes_;
    std::vector<int> atTop_;
    std::size_t triangles_ = 0;
};

}  // namespace gltf
