#include "standalone/loaders/assimp/assimp_nodes.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "standalone/data/property_reader.h"
#include "standalone/loaders/assimp/assimp_properties.h"
#include "standalone/loaders/assimp/assimp_skin.h"
#include "standalone/loaders/assimp/assimp_space.h"
#include "standalone/loaders/assimp/wavefront_names.h"

namespace standalone {
namespace {

constexpr std::string_view kChainMark = "_$AssimpFbx$_";
constexpr int kMostLevels = 2000;

std::string_view NameOf(const aiNode& node) {
    return {node.mName.data, node.mName.length};
}

// "RotationPivot" of a node that stands for one step of another node's transform; empty for a whole node.
std::string_view StepOf(const aiNode& node) {
    const std::string_view name = NameOf(node);
    const std::size_t mark = name.find(kChainMark);
    return mark == std::string_view::npos ? std::string_view() : name.substr(mark + kChainMark.size());
}

// The steps by which the points of a node's object lie beside the node, and those that take them back for its
// children.
bool IsGeometryStep(std::string_view step) {
    return step.starts_with("Geometric");
}

bool IsWayBack(std::string_view step) {
    return IsGeometryStep(step) && step.ends_with("Inverse");
}

class eNodeCollector {
public:
    explicit eNodeCollector(eAssimpImport& ownImport) : import(ownImport) {
        for (const aiCamera* camera : std::span(import.file.mCameras, import.file.mNumCameras)) {
            cameras.try_emplace(camera->mName.C_Str(), camera);
        }
        for (const aiLight* light : std::span(import.file.mLights, import.file.mNumLights)) {
            lights.try_emplace(light->mName.C_Str(), light);
        }
    }

    void CollectAll() {
        const aiNode& root = *import.file.mRootNode;
        const std::vector<std::size_t>* facts = import.fbx == nullptr ? nullptr : &import.fbx->roots;
        if (root.mNumMeshes != 0) {
            Collect(root, -1, {}, nullptr, 1);
        } else {
            CollectChildren(root, -1, facts, 1);
        }
    }

private:
    void CollectChildren(const aiNode& node, int parent, const std::vector<std::size_t>* facts, int level) {
        for (unsigned child = 0; child < node.mNumChildren; ++child) {
            Collect(*node.mChildren[child], parent, {}, FactsOf(node, child, facts), level);
        }
    }

    // What the file itself says of a child: both trees have their children in the file's order. Where the
    // library leaves one out the name tells.
    const eFbxModel* FactsOf(const aiNode& node, unsigned child, const std::vector<std::size_t>* facts) {
        if (import.fbx == nullptr) {
            return nullptr;
        }
        const auto model = [&](std::size_t number) { return &import.fbx->models[number]; };
        if (facts != nullptr && facts->size() == node.mNumChildren) {
            return model((*facts)[child]);
        }
        const std::string_view name = NameOf(*node.mChildren[child]);
        for (const std::size_t number : facts == nullptr ? std::vector<std::size_t>() : *facts) {
            if (name.substr(0, name.find(kChainMark)) == model(number)->libraryName) {
                return model(number);
            }
        }
        import.report.CannotShow(ePhrase::LostUserProperties, name);
        return nullptr;
    }

    void Collect(const aiNode& node, int parent, std::vector<const aiNode*> chain, const eFbxModel* facts,
                 int level) {
        if (level > kMostLevels) {
            import.report.Problem(node.mName.C_Str(), eMessageId::ImportNodeDepth, kMostLevels);
            return;
        }
        chain.push_back(&node);
        if (!StepOf(node).empty() && node.mNumChildren == 1) {
            Collect(*node.mChildren[0], parent, std::move(chain), facts, level);
            return;
        }
        const int number = static_cast<int>(import.nodes.size());
        Add(node, parent, chain, facts);
        const aiNode* last = &node;
        while (last->mNumChildren == 1 && IsWayBack(StepOf(*last->mChildren[0]))) {
            last = last->mChildren[0];
        }
        CollectChildren(*last, number, facts == nullptr ? nullptr : &facts->children, level + 1);
    }

    void Add(const aiNode& node, int parent, const std::vector<const aiNode*>& chain,
             const eFbxModel* facts) {
        eAssimpNode& added = import.nodes.emplace_back();
        added.name = facts != nullptr && !facts->name.empty() ? facts->name : NameInFile(node);
        added.shown = &node;
        added.facts = facts;
        added.parent = parent;
        for (const aiNode* step : chain) {
            (IsGeometryStep(StepOf(*step)) ? geometry : added.chain).push_back(step);
        }
        added.geometry = ProductOf(geometry);
        geometry.clear();
        added.camera = Find(cameras, node);
        added.light = Find(lights, node);
        AddRecord(added, static_cast<int>(import.nodes.size()) - 1);
    }

    std::string NameInFile(const aiNode& node) const {
        const auto named = import.names.find(&node);
        return named == import.names.end() ? std::string(WavefrontNameInFile(NameOf(node))) : named->second;
    }

    static host::Matrix3 ProductOf(const std::vector<const aiNode*>& steps) {
        host::Matrix3 product;
        for (const aiNode* step : steps) {
            product = HostMatrix(step->mTransformation) * product;
        }
        return product;
    }

    void AddRecord(eAssimpNode& node, int number) {
        eNodeData& record = import.scene.nodes.emplace_back();
        record.name = node.name.empty() ? "node_" + std::to_string(number) : import.report.Ansi(node.name);
        record.parent = node.parent;
        ReadAssimpProperties(import, node, record);
        if (node.facts != nullptr && node.facts->lostMaterials) {
            import.report.Notice(eMessageId::ImportOtherMaterials, node.name, import.PathOf(node));
        }
        (node.parent < 0 ? import.scene.roots : import.RecordOf(node.parent).children).push_back(number);
    }

    template <class Thing>
    static const Thing* Find(const std::unordered_map<std::string, const Thing*>& things,
                             const aiNode& node) {
        const auto found = things.find(node.mName.C_Str());
        return found == things.end() ? nullptr : found->second;
    }

    eAssimpImport& import;
    std::vector<const aiNode*> geometry;  // scratch
    std::unordered_map<std::string, const aiCamera*> cameras;
    std::unordered_map<std::string, const aiLight*> lights;
};

bool HasSkins(const aiScene& file) {
    return std::ranges::any_of(std::span(file.mMeshes, file.mNumMeshes),
                               [](const aiMesh* mesh) { return mesh->HasBones(); });
}

// Motions, skins, lights and cameras name their nodes, and the first of a name gets all.
void TellSharedNames(eAssimpImport& import) {
    const aiScene& file = import.file;
    if (!file.HasAnimations() && !file.HasLights() && !file.HasCameras() && !HasSkins(file)) {
        return;
    }
    std::unordered_set<std::string_view> seen;
    for (const eAssimpNode& node : import.nodes) {
        if (!seen.insert(NameOf(*node.shown)).second) {
            import.report.Notice(eMessageId::ImportSharedName, node.name.empty()
                                                                   ? Utf8Words(ePhrase::Nameless)
                                                                   : eBilingual{node.name, node.name});
        }
    }
}

// The nodes from the root down to the given one.
std::vector<int> PathTo(const eAssimpImport& import, int node) {
    std::vector<int> path;
    for (; node >= 0; node = import.nodes[static_cast<std::size_t>(node)].parent) {
        path.insert(path.begin(), node);
    }
    return path;
}

// The deepest node that is above all the bones; -1 where they hang below different roots.
int NodeAbove(const eAssimpImport& import, const std::vector<int>& bones) {
    std::vector<int> common = PathTo(import, bones.front());
    common.pop_back();
    for (const int bone : bones) {
        const std::vector<int> path = PathTo(import, bone);
        const auto parting = std::ranges::mismatch(common, path);
        const bool isAboveItself = parting.in2 == path.end();
        common.erase(parting.in1, common.end());
        if (isAboveItself && !common.empty()) {
            common.pop_back();
        }
    }
    return common.empty() ? -1 : common.back();
}

host::Matrix3 StillFileWorld(const eAssimpImport& import, int node) {
    host::Matrix3 world;
    for (const int step : PathTo(import, node)) {
        world = StillFileMatrix(import.nodes[static_cast<std::size_t>(step)]) * world;
    }
    return world;
}

bool IsModelOfItsOwn(const eNodeData& node) {
    const eUserProperties properties(node.properties);
    return properties.Find("Model") || properties.Find("XModel") || properties.Find("Structure");
}

// True if something above the bones says that it is a model: a root without any word may as well be one
// object among others.
bool IsBelowModel(const eAssimpImport& import, int node) {
    return std::ranges::any_of(PathTo(import, node), [&](int above) {
        return IsModelOfItsOwn(import.scene.nodes[static_cast<std::size_t>(above)]);
    });
}

}  // namespace

void MakeAssimpNodes(eAssimpImport& import) {
    eNodeCollector(import).CollectAll();
    TellSharedNames(import);
}

std::vector<int> ParentsFirst(const eAssimpImport& import) {
    std::vector<int> order = import.scene.roots;
    for (std::size_t next = 0; next < order.size(); ++next) {
        const std::vector<int>& children = import.scene.nodes[static_cast<std::size_t>(order[next])].children;
        order.insert(order.end(), children.begin(), children.end());
    }
    return order;
}

void GatherSkinnedMeshes(eAssimpImport& import) {
    std::vector<int>& roots = import.scene.roots;
    std::map<int, std::vector<int>> gathered;  // by the node that they go below
    for (const int root : roots) {
        const std::vector<int> bones = BonesOf(import, import.NodeOf(root));
        const int above = bones.empty() ? -1 : NodeAbove(import, bones);
        if (above >= 0 && !IsModelOfItsOwn(import.RecordOf(root)) && IsBelowModel(import, above) &&
            PathTo(import, above).front() != root) {
            gathered[above].push_back(root);
        }
    }
    for (const auto& [above, meshes] : gathered) {
        std::vector<int>& children = import.RecordOf(above).children;
        children.insert(children.begin(), meshes.begin(), meshes.end());
        for (const int mesh : meshes) {
            std::erase(roots, mesh);
            import.RecordOf(mesh).parent = above;
            import.NodeOf(mesh).parent = above;
            import.NodeOf(mesh).intoParent = Inverse(StillFileWorld(import, above));
            import.report.Notice(eMessageId::ImportMovedMesh, import.NodeOf(mesh).name);
        }
    }
}

}  // namespace standalone
