#include "answers/lint_skin.h"

#include <cmath>
#include <set>

#include "geometry/export_mesh.h"
#include "host/node_path.h"
#include "run/export.h"
#include "scene/bones/find_skin.h"
#include "scene/triangle_mesh.h"

namespace answers {
namespace {

constexpr float kWeightTolerance = 0.01F;

struct eSkinCount {
    int vertices = 0;
    int unweighted = 0;
    int unequal = 0;  // to a sum of 1
    std::set<int> bones;

    void Add(const host::ISkinContextData& weights, int vertex) {
        float sum = 0;
        for (int i = 0; i < weights.GetNumAssignedBones(vertex); ++i) {
            const float weight = weights.GetBoneWeight(vertex, i);
            sum += weight;
            if (weight > 0) {
                bones.insert(weights.GetAssignedBone(vertex, i));
            }
        }
        const bool isUnweighted = sum <= 0;
        unweighted += isUnweighted ? 1 : 0;
        unequal += !isUnweighted && std::abs(sum - 1) > kWeightTolerance ? 1 : 0;
    }
};

// Nothing to count without a skin that acts on the node's own vertices.
eSkinCount CountSkin(Export& run, host::INode& node) {
    eSkinCount count;
    host::Modifier* const modifier = FindSkin(node);
    const host::ISkin* const skin =
        modifier != nullptr ? modifier->GetInterface(host::Modifier::kSkinInterface) : nullptr;
    const host::ISkinContextData* const weights = skin != nullptr ? skin->GetContextInterface(node) : nullptr;
    const eTriangleMesh triangles(node, run.StaticTime());
    if (weights != nullptr && triangles.IsValid()) {
        count.vertices = static_cast<int>(triangles.Mesh().verts.size());
    }
    for (int vertex = 0; vertex < count.vertices; ++vertex) {
        count.Add(*weights, vertex);
    }
    return count;
}

}  // namespace

void LintSkin(Export& run, host::INode& node, std::vector<eMessage>& advice) {
    if (FindSkin(node) == nullptr) {
        return;
    }
    const eSkinCount count = CountSkin(run, node);
    const eMessagePlace place{.node = host::PathOf(node)};
    if (count.unweighted > 0) {
        advice.push_back(MakeMessage(eMessageId::LintUnweightedVertices, place, node.GetName(),
                                     count.unweighted, count.vertices));
    }
    if (count.unequal > 0) {
        advice.push_back(
            MakeMessage(eMessageId::LintWeightSum, place, node.GetName(), count.unequal, count.vertices));
    }
    if (count.bones.size() > std::size_t{kBonesPerPalette}) {
        advice.push_back(MakeMessage(eMessageId::LintManyBones, place, node.GetName(), count.bones.size()));
    }
}

}  // namespace answers
