#include "mesh/face_skin.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kSmallestWeight = 0.001F;
// A vertex with one bone still has the layout of two.
constexpr int kFewestBones = 2;

}  // namespace

eExportFaceSkin eFaceSkinReader::ReadFaceSkin(const std::uint32_t (&vertices)[3], int& bonesPerVertex) {
    eExportFaceSkin record;
    for (int corner = 0; corner < 3; ++corner) {
        ReadCorner(static_cast<int>(vertices[corner]), record.bones[corner], record.weights[corner],
                   bonesPerVertex);
    }
    return record;
}

void eFaceSkinReader::ReadCorner(int vertex, std::uint8_t (&bones)[kInfluencesPerCorner],
                                 float (&weights)[kInfluencesPerCorner], int& bonesPerVertex) {
    const int count = skin_.GetNumAssignedBones(vertex);
    if (count == 0) {
        weights[0] = 1;
        return;
    }
    influences_.clear();
    for (int i = 0; i < count; ++i) {
        const float weight = skin_.GetBoneWeight(vertex, i);
        // A weight that is no number has no place in the order of weights.
        influences_.emplace_back(skin_.GetAssignedBone(vertex, i), std::isfinite(weight) ? weight : 0.0F);
    }
    std::ranges::stable_sort(influences_, [](const auto& a, const auto& b) { return a.second > b.second; });
    float sum = 0;
    for (int k = 0; k < std::min(count, kInfluencesPerCorner); ++k) {
        const auto& [bone, weight] = influences_[static_cast<std::size_t>(k)];
        if (std::fabs(weight) < kSmallestWeight || bone < 0 || bone >= kBonesPerSkin) {
            continue;
        }
        bones[k] = static_cast<std::uint8_t>(bone + 1);
        weights[k] = weight;
        sum += weight;
        bonesPerVertex = std::max({bonesPerVertex, kFewestBones, k + 1});
    }
    if (std::fabs(sum) >= kSmallestWeight) {
        for (float& weight : weights) {
            weight /= sum;
        }
    }
}
