#include "answers/lint_skin.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <set>
#include <vector>

#include "geometry/export_mesh.h"
#include "host/node_path.h"
#include "run/export.h"
#include "scene/bones/find_skin.h"
#include "scene/triangle_mesh.h"

namespace answers {
namespace {

constexpr float kWeightTolerance = 0.01F;
// A smaller share nobody sees.
constexpr float kLeastLoss = 0.05F;
// Stands for "no bone", which takes a place in a palette as bones do.
constexpr int kNoBone = -1;

struct eSkinCount {
    int vertices = 0;
    int unweighted = 0;
    int unequal = 0;  // to a sum of 1
    int losing = 0;   // part of their weight, as a vertex of the game follows three bones
    float mostLost = 0;
    std::set<int> bones;

    void Add(const host::ISkinContextData& skin, int vertex) {
        std::vector<float> weights;
        for (int i = 0; i < skin.GetNumAssignedBones(vertex); ++i) {
            if (const float weight = skin.GetBoneWeight(vertex, i); weight > 0) {
                weights.push_back(weight);
                bones.insert(skin.GetAssignedBone(vertex, i));
            }
        }
        if (weights.size() < kInfluencesPerCorner) {
            bones.insert(kNoBone);
        }
        AddWeights(weights);
    }

private:
    void AddWeights(std::vector<float>& weights) {
        const float sum = std::accumulate(weights.begin(), weights.end(), 0.0F);
        if (sum <= 0) {
            ++unweighted;
            return;
        }
        unequal += std::abs(sum - 1) > kWeightTolerance ? 1 : 0;
        std::ranges::sort(weights, std::greater());
        const auto kept = std::min(weights.size(), std::size_t{kInfluencesPerCorner});
        const float lost =
            std::accumulate(weights.begin() + static_cast<std::ptrdiff_t>(kept), weights.end(), 0.0F) / sum;
        losing += lost >= kLeastLoss ? 1 : 0;
        mostLost = std::max(mostLost, lost);
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
    if (count.losing > 0) {
        constexpr float kPerCent = 100;
        advice.push_back(MakeMessage(eMessageId::LintLostWeight, place, node.GetName(), count.losing,
                                     count.vertices, static_cast<int>(count.mostLost * kPerCent)));
    }
    if (count.bones.size() > std::size_t{kBonesPerPalette}) {
        advice.push_back(MakeMessage(eMessageId::LintManyBones, place, node.GetName(),
                                     count.bones.size() - count.bones.count(kNoBone)));
    }
}

}  // namespace answers
