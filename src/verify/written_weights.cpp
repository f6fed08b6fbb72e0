#include "verify/written_weights.h"

#include <algorithm>
#include <cmath>

#include "geometry/vertex_layout.h"

namespace verify {

namespace {

constexpr int kNoBone = -2;

// The shares of bones at a corner, those of the scene above 0 and those of the file below.
class eShares {
public:
    void Add(int bone, float weight) {
        const auto end = shares_.begin() + count_;
        const auto known =
            std::find_if(shares_.begin(), end, [&](const eSceneWeight& w) { return w.bone == bone; });
        if (known == end) {
            shares_[static_cast<std::size_t>(count_++)] = {bone, weight};
        } else {
            known->weight += weight;
        }
    }
    double Largest() const {
        double largest = 0;
        for (const eSceneWeight& share : shares_) {
            largest = std::max(largest, std::fabs(static_cast<double>(share.weight)));
        }
        return largest;
    }

private:
    std::array<eSceneWeight, 8> shares_{};
    std::ptrdiff_t count_ = 0;
};

}  // namespace

eWrittenWeights::eWrittenWeights(const eFileMesh& mesh, const eSceneTriangles& scene) {
    for (const std::string& name : mesh.bones) {
        const auto known = std::ranges::find(scene.boneNames, name);
        bones_.push_back(known != scene.boneNames.end() ? static_cast<int>(known - scene.boneNames.begin())
                                                        : -1);
    }
}

double eWrittenWeights::Difference(const eSceneCorner& scene, const eExportVertex& vertex,
                                   const eFileSubMesh& subMesh) const {
    eShares shares;
    bool hasBone = false;
    for (const eSceneWeight& w : scene.weights) {
        if (w.weight != 0) {
            shares.Add(w.bone, w.weight);
            hasBone = true;
        }
    }
    if (!hasBone) {
        shares.Add(kNoBone, 1);
    }
    const int stored = WeightCount(vertex.format);
    float rest = 1;
    for (int i = 0; i <= stored; ++i) {
        const float weight = i < stored ? vertex.weights[i] : rest;
        rest -= weight;
        shares.Add(stored == 0 ? kNoBone : BoneOf(vertex.boneIndices[i], subMesh), -weight);
    }
    return shares.Largest();
}

// A bone that the scene does not know is another one than all of its own.
int eWrittenWeights::BoneOf(std::uint8_t entry, const eFileSubMesh& subMesh) const {
    const std::size_t number = entry < subMesh.palette.size() ? subMesh.palette[entry] : bones_.size() + 1;
    return number == 0 ? kNoBone : number <= bones_.size() ? bones_[number - 1] : -1;
}

}  // namespace verify
