#pragma once

#include <array>
#include <string>
#include <vector>

#include "verify/baked_light.h"
#include "verify/mesh_source.h"
#include "written/exact_space.h"

namespace verify {

// How much a bone moves a vertex; by the number of its name in eSceneTriangles::boneNames.
struct eSceneWeight {
    int bone = 0;
    float weight = 0;
};

// A corner of a triangle as the engine should have it.
struct eSceneCorner {
    eVector position{};                           // metres, in the space of the mesh's node
    eVector normal{};                             // of any length; 0 where nothing tells it
    std::array<std::array<double, 2>, 2> maps{};  // u, v running down
    std::array<float, 4> color{1, 1, 1, 1};       // red, green, blue, alpha
    std::array<eSceneWeight, 3> weights{};        // heaviest first; a weight of 0 ends them
    bool hasMoreWeights = false;                  // that the engine has no room for
    std::uint32_t vertex = 0;                     // of the node's own mesh
};

// A visible triangle, its corners in the order that shows its face.
struct eSceneTriangle {
    std::array<eSceneCorner, 3> corners;
    int material = 0;  // number in eSceneTriangles::materials
    int node = 0;      // number in eSceneMesh::feeders
    bool hasSecondMap = false;
};

// All that a mesh should hold.
struct eSceneTriangles {
    std::vector<eSceneTriangle> triangles;
    std::vector<std::string> materials;
    std::vector<host::Mtl*> leaves;      // that the materials come from; null for none
    std::vector<std::string> boneNames;  // those of the skin of the mesh's own node first, in its order
    std::size_t skinBones = 0;           // so many
    bool isSkinned = false;
    bool isLit = false;                 // by light in the colours, so that the normals say nothing
    int hidden = 0;                     // triangles that nobody sees
    std::vector<std::string> refusals;  // why triangles of a node, or all, are left out

    int NumberOfBone(const std::string& name);
};

// Reads what the nodes of the mesh show at a time, their skins switched off.
eSceneTriangles ReadSceneTriangles(const eVerifiedScene& scene, const eSceneMesh& mesh, eBakedLight& light,
                                   host::TimeValue time);

}  // namespace verify
