#include "standalone/loaders/gltf/shapes/gltf_skin.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>

#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/gltf_axes.h"

namespace standalone {
namespace {

constexpr std::size_t kInfluencesPerSet = 4;

// From the mesh's space to the space of each joint, in the host's axes.
std::vector<host::Matrix3> ReadBindMatrices(eGltfImport& import, int skin) {
    const tinygltf::Skin& source = import.model.skins[static_cast<std::size_t>(skin)];
    std::vector<host::Matrix3> matrices(source.joints.size());
    if (source.inverseBindMatrices < 0) {
        return matrices;
    }
    const std::string place = GltfPlace("skins", skin) + "/inverseBindMatrices";
    const eGltfNumbers numbers = import.accessors.Numbers(source.inverseBindMatrices, 16, place);
    if (numbers.Count() < matrices.size()) {
        import.report.Problem(place, eMessageId::GltfSkinMatrices, numbers.Count(), matrices.size());
        return matrices;
    }
    for (std::size_t joint = 0; joint < matrices.size(); ++joint) {
        matrices[joint] = ToHostMatrix(FileMatrix(numbers.At<16>(joint)), eAxes{});
    }
    return matrices;
}

// The first joint that no other joint is above of.
std::size_t RootJoint(const eGltfImport& import, const std::vector<int>& joints) {
    std::vector<bool> isJoint(import.nodes.size());
    for (const int joint : joints) {
        isJoint[static_cast<std::size_t>(joint)] = true;
    }
    const auto isRoot = [&](int joint) {
        int above = import.hierarchy.parents[static_cast<std::size_t>(joint)];
        while (above >= 0 && !isJoint[static_cast<std::size_t>(above)]) {
            above = import.hierarchy.parents[static_cast<std::size_t>(above)];
        }
        return above < 0;
    };
    return static_cast<std::size_t>(std::ranges::find_if(joints, isRoot) - joints.begin());
}

bool IsNearIdentity(const host::Matrix3& m) {
    constexpr float kTolerance = 1e-5F;
    const host::Matrix3 identity;
    for (int row = 0; row < 4; ++row) {
        if (!m.GetRow(row).Equals(identity.GetRow(row), kTolerance)) {
            return false;
        }
    }
    return true;
}

// The pose in which the mesh was bound has the mesh where the root of the skeleton takes it at rest.
host::Matrix3 BindPlacement(const eGltfImport& import, int node, const std::vector<int>& joints,
                            const std::vector<host::Matrix3>& bindMatrices,
                            const std::vector<host::Matrix3>& worlds) {
    const std::size_t root = RootJoint(import, joints);
    const host::Matrix3 bound = bindMatrices[root] * worlds[static_cast<std::size_t>(joints[root])];
    return bound * Inverse(worlds[static_cast<std::size_t>(node)]);
}

}  // namespace

eGltfSkin ReadGltfSkin(eGltfImport& import, int node, const std::vector<host::Matrix3>& worlds) {
    const int number = import.model.nodes[static_cast<std::size_t>(node)].skin;
    const std::vector<int>& joints = import.model.skins[static_cast<std::size_t>(number)].joints;
    eGltfSkin skin;
    for (const int joint : joints) {
        skin.modifier.bones.push_back(import.NodeOf(joint).record);
        if (skin.modifier.bones.back() < 0) {
            import.report.Problem(GltfPlace("skins", number) + "/joints", eMessageId::GltfSkinJoint, joint);
        }
    }
    std::vector<host::Matrix3> bindMatrices = ReadBindMatrices(import, number);
    if (import.report.HasProblems() || joints.empty()) {
        return skin;
    }
    const host::Matrix3 placement = BindPlacement(import, node, joints, bindMatrices, worlds);
    skin.isPlaced = !IsNearIdentity(placement);
    if (skin.isPlaced) {
        skin.placement = placement;
    }
    const host::Matrix3 back = Inverse(skin.placement);
    for (std::size_t joint = 0; joint < joints.size(); ++joint) {
        host::Matrix3 matrix = skin.isPlaced ? back * bindMatrices[joint] : bindMatrices[joint];
        skin.modifier.bindMatrices.push_back(import.KeepsOwnAxes(joints[joint]) ? matrix * Inverse(OwnAxes())
                                                                                : matrix);
    }
    return skin;
}

namespace {

struct eInfluenceSet {
    int joints = -1;
    int weights = -1;
};

// A skin has no more bones than 64 sets name; data behind that would only cost memory.
std::vector<eInfluenceSet> InfluenceSets(const eGltfVertexBlock& block) {
    constexpr std::size_t kMostSets = 64;
    std::vector<eInfluenceSet> sets;
    while (sets.size() < kMostSets) {
        const std::string number = std::to_string(sets.size());
        const eInfluenceSet set{block.Attribute("JOINTS_" + number), block.Attribute("WEIGHTS_" + number)};
        if (set.joints < 0 || set.weights < 0) {
            return sets;
        }
        sets.push_back(set);
    }
    return sets;
}

// The numbers of a set on the vertices of a block, by number in the file; empty, with a problem, where it
// lacks some.
struct eInfluences {
    eInfluences(const eGltfAccessors& accessors, const eGltfVertices& vertices, const eGltfVertexBlock& block,
                const eInfluenceSet& set)
        : joints(vertices.HasAllVertices(block, set.joints)
                     ? accessors.Wholes(set.joints, kInfluencesPerSet, block.place)
                     : std::vector<std::uint32_t>()),
          weights(accessors.Numbers(set.weights, kInfluencesPerSet, block.place)),
          isEmpty(joints.empty() || !vertices.HasAllVertices(block, set.weights) || weights.IsEmpty()) {}

    std::vector<std::uint32_t> joints;
    eGltfNumbers weights;
    bool isEmpty;
    std::size_t beyond = 0;  // influences of joints that the skin lacks
};

// The vertices of a skin, one behind the other.
class eWeightList {
public:
    explicit eWeightList(eSkinModifier& ownSkin) : skin(ownSkin) { skin.firstWeight.push_back(0); }

    void EndVertex() { skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size())); }

    void Add(eInfluences& influences, std::uint32_t vertexInFile) {
        const auto weights = influences.weights.At<kInfluencesPerSet>(vertexInFile);
        const std::uint32_t* joints = &influences.joints[kInfluencesPerSet * vertexInFile];
        for (std::size_t i = 0; i < kInfluencesPerSet; ++i) {
            if (weights[i] == 0) {
                continue;
            }
            if (joints[i] < skin.bones.size()) {
                Add({static_cast<int>(joints[i]), weights[i]});
            } else {
                ++influences.beyond;
            }
        }
    }

private:
    void Add(const eSkinWeight& influence) {
        for (std::size_t known = skin.firstWeight.back(); known < skin.weights.size(); ++known) {
            if (skin.weights[known].bone == influence.bone) {
                skin.weights[known].weight += influence.weight;
                return;
            }
        }
        skin.weights.push_back(influence);
    }

    eSkinModifier& skin;
};

}  // namespace

void ReadGltfInfluences(eGltfImport& import, const eGltfVertices& vertices, eSkinModifier& skin) {
    skin.firstWeight.reserve(vertices.Count() + 1);
    eWeightList list(skin);
    for (const eGltfVertexBlock& block : vertices.Blocks()) {
        std::deque<eInfluences> sets;
        for (const eInfluenceSet& set : InfluenceSets(block)) {
            sets.emplace_back(import.accessors, vertices, block, set);
        }
        for (const std::uint32_t vertex : block.kept) {
            for (eInfluences& set : sets) {
                if (!set.isEmpty) {
                    list.Add(set, vertex);
                }
            }
            list.EndVertex();
        }
        for (const eInfluences& set : sets) {
            if (set.beyond != 0) {
                import.report.Problem(block.place, eMessageId::GltfSkinInfluences, set.beyond,
                                      skin.bones.size());
            }
        }
    }
    skin.weights.shrink_to_fit();
}

}  // namespace standalone
