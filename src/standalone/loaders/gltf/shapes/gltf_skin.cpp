#include "standalone/loaders/gltf/shapes/gltf_skin.h"

#include <algorithm>
#include <array>
#include <cmath>

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

// The influences of all vertices at their greatest number, to be packed afterwards.
struct eInfluenceTable {
    std::size_t width = 0;              // per vertex
    std::vector<std::uint32_t> counts;  // in use, by vertex
    std::vector<eSkinWeight> influences;

    void Add(std::size_t vertex, const eSkinWeight& influence) {
        const auto first = influences.begin() + static_cast<std::ptrdiff_t>(vertex * width);
        const auto end = first + counts[vertex];
        const auto known =
            std::find_if(first, end, [&](const eSkinWeight& other) { return other.bone == influence.bone; });
        if (known != end) {
            known->weight += influence.weight;
        } else {
            *end = influence;
            ++counts[vertex];
        }
    }
};

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

void ReadInfluenceSet(eGltfImport& import, const eGltfVertices& vertices, const eGltfVertexBlock& block,
                      const eInfluenceSet& set, std::size_t boneCount, eInfluenceTable& table) {
    if (!vertices.HasAllVertices(block, set.joints)) {
        return;
    }
    const std::vector<std::uint32_t> joints =
        import.accessors.Wholes(set.joints, kInfluencesPerSet, block.place);
    if (joints.empty()) {
        return;
    }
    std::size_t beyond = 0;
    vertices.ForEachOf<kInfluencesPerSet>(
        block, set.weights, [&](std::size_t vertex, const std::array<float, kInfluencesPerSet>& weights) {
            const std::size_t inFile = block.kept[vertex - block.first] * kInfluencesPerSet;
            for (std::size_t i = 0; i < kInfluencesPerSet; ++i) {
                if (weights[i] == 0) {
                    continue;
                }
                if (joints[inFile + i] >= boneCount) {
                    ++beyond;
                    continue;
                }
                table.Add(vertex, {static_cast<int>(joints[inFile + i]), weights[i]});
            }
        });
    if (beyond != 0) {
        import.report.Problem(block.place, eMessageId::GltfSkinInfluences, beyond, boneCount);
    }
}

void Pack(const eInfluenceTable& table, eSkinModifier& skin) {
    skin.firstWeight.push_back(0);
    for (std::size_t vertex = 0; vertex < table.counts.size(); ++vertex) {
        const auto first = table.influences.begin() + static_cast<std::ptrdiff_t>(vertex * table.width);
        skin.weights.insert(skin.weights.end(), first, first + table.counts[vertex]);
        skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size()));
    }
}

}  // namespace

void ReadGltfInfluences(eGltfImport& import, const eGltfVertices& vertices, eSkinModifier& skin) {
    eInfluenceTable table;
    for (const eGltfVertexBlock& block : vertices.Blocks()) {
        table.width = std::max(table.width, InfluenceSets(block).size() * kInfluencesPerSet);
    }
    table.counts.resize(vertices.Count());
    table.influences.resize(vertices.Count() * table.width);
    for (const eGltfVertexBlock& block : vertices.Blocks()) {
        for (const eInfluenceSet& set : InfluenceSets(block)) {
            ReadInfluenceSet(import, vertices, block, set, skin.bones.size(), table);
        }
    }
    Pack(table, skin);
}

}  // namespace standalone
