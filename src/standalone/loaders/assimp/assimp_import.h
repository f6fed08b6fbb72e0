#pragma once

#include <map>
#include <string>
#include <vector>

#include "standalone/loaders/assimp/assimp_library.h"
#include "standalone/loaders/fbx/fbx_models.h"
#include "standalone/loaders/shared/import_report.h"
#include "standalone/loaders/shared/node_state.h"
#include "standalone/scene_data.h"

namespace standalone {

// A node of the file on its way into the scene. The library makes several nodes of one that has pivots: they
// are one again here.
struct eAssimpNode {
    std::string name;                  // UTF-8
    std::vector<const aiNode*> chain;  // what makes its transform, from the outermost in
    const aiNode* shown = nullptr;     // the one with the meshes
    const aiCamera* camera = nullptr;
    const aiLight* light = nullptr;
    const eFbxModel* facts = nullptr;     // what an FBX file says beside the library
    eShapeWord shape = eShapeWord::None;  // the primitive that its mesh stands for
    int parent = -1;                      // in eAssimpImport::nodes
    host::Matrix3 intoParent{};           // behind the chain, for a node that was hung elsewhere
    host::Matrix3 geometry{};             // from the points of the file to the node, which no child feels
    host::Matrix3 frame{};                // from the node's space in the file to that in the scene
};

// A take of the file on the host's one timeline.
struct eAssimpTake {
    const aiAnimation* source = nullptr;  // null for a take that the library leaves out, as it moves nothing
    const eFbxTake* facts = nullptr;      // what an FBX file says beside the library
    std::string name;                     // UTF-8
    double rate = 1;                      // frames of the host a tick of the library
    double shift = 0;                     // frames from a time of the library to the timeline
    int firstFrame = 0;                   // on the timeline
    int lastFrame = 0;
    std::map<const aiNode*, const aiNodeAnim*> channels{};
    std::vector<int> moved{};  // numbers of nodes
};

// What the steps of an import share: the file as it was read, and the scene as far as it is made.
struct eAssimpImport {
    const aiScene& file;
    const std::unordered_map<const aiNode*, std::string>& names;  // eAssimpScene::names
    const eFbxModels* fbx = nullptr;                              // null for the other formats
    eImportReport& report;
    std::string path;                         // of the file, UTF-8
    std::string folder;                       // of the file, UTF-8
    std::vector<std::string> texturePaths{};  // UTF-8
    double framesPerSecond = 30;

    eSceneData scene{};
    std::vector<eAssimpNode> nodes{};  // number n is record n of the scene
    std::vector<eAssimpTake> takes{};
    host::Matrix3 toHost{};  // from the world of the file to that of the host, metres
    double unitMetres = 1;   // of a unit of the file

    eNodeData& RecordOf(int node) { return scene.nodes[static_cast<std::size_t>(node)]; }
    eAssimpNode& NodeOf(int node) { return nodes[static_cast<std::size_t>(node)]; }

    // The names of the node and of those above it, UTF-8.
    std::string PathOf(const eAssimpNode& node) const {
        const bool isTop = node.parent < 0;
        return isTop ? node.name : PathOf(nodes[static_cast<std::size_t>(node.parent)]) + "/" + node.name;
    }
    // A fault of the node.
    void ProblemAt(const eAssimpNode& node, eMessageId id) {
        eLoadMessage problem = MakeLoadMessage(node.name, id);
        problem.node = PathOf(node);
        report.Problem(std::move(problem));
    }
};

}  // namespace standalone
