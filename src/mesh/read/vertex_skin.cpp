#include "mesh/read/vertex_skin.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr float kSmallestWeight = 0.001F;
// A vertex with one bone still has the layout of two.
constexpr int kFewestBones = 2;

}  // namespace

std::vector<std::uint8_t> NumbersInTable(const host::ISkin& skin, const std::vector<host::INode*>& table) {
    std::vector<std::uint8_t> numbers(static_cast<std::size_t>(std::max(skin.GetNumBones(), 0)));
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const host::INode* bone = skin.GetBone(static_cast<int>(i));
        // A skin that lists a bone twice keeps both entries.
        const bool isInPlace = i < table.size() && table[i] == bone;
        const std::size_t place =
            isInPlace ? i : static_cast<std::size_t>(std::ranges::find(table, bone) - table.begin());
        numbers[i] = static_cast<std::uint8_t>(place < table.size() ? place + 1 : 0);
    }
    return numbers;
}

eVertexSkinReader::eVertexSkinReader(const host::ISkinContextData& ownWeights,
                                     std::vector<std::uint8_t> ownTableNumbers, std::size_t vertexCount)
    : weights(ownWeights), tableNumbers(std::move(ownTableNumbers)), isRead(vertexCount) {}

void eVertexSkinReader::eHeaviest::Add(std::uint8_t bone, float weight) {
    int place = count;
    while (place > 0 && weights[place - 1] < weight) {
        --place;
    }
    if (place == kInfluencesPerCorner) {
        return;
    }
    count = std::min(count + 1, kInfluencesPerCorner);
    for (int i = count - 1; i > place; --i) {
        bones[i] = bones[i - 1];
        weights[i] = weights[i - 1];
    }
    bones[place] = bone;
    weights[place] = weight;
}

eVertexSkinReader::eHeaviest eVertexSkinReader::HeaviestOf(int vertex) {
    eHeaviest heaviest;
    const int assigned = weights.GetNumAssignedBones(vertex);
    for (int i = 0; i < assigned; ++i) {
        const int bone = weights.GetAssignedBone(vertex, i);
        const bool isOfSkin = bone >= 0 && static_cast<std::size_t>(bone) < tableNumbers.size();
        const std::uint8_t number = isOfSkin ? tableNumbers[static_cast<std::size_t>(bone)] : 0;
        if (number == 0) {
            leftOutBones.insert(bone);
            continue;
        }
        // A weight that is no number has no place in the order of weights.
        const float weight = weights.GetBoneWeight(vertex, i);
        heaviest.Add(number, std::isfinite(weight) ? weight : 0.0F);
    }
    return heaviest;
}

void eVertexSkinReader::ReadAnew(int vertex, eExportVertexSkin& skin, int& bonesPerVertex) {
    const eHeaviest heaviest = HeaviestOf(vertex);
    skin = heaviest.count != 0 ? eExportVertexSkin{.weights = {}} : eExportVertexSkin();
    float sum = 0;
    for (int k = 0; k < heaviest.count; ++k) {
        if (std::fabs(heaviest.weights[k]) >= kSmallestWeight) {
            skin.bones[k] = heaviest.bones[k];
            skin.weights[k] = heaviest.weights[k];
            sum += skin.weights[k];
            bonesPerVertex = std::max({bonesPerVertex, kFewestBones, k + 1});
        }
    }
    if (std::fabs(sum) >= kSmallestWeight) {
        for (float& weight : skin.weights) {
            weight /= sum;
        }
    }
}
