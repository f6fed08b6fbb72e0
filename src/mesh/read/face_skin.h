#pragma once

#include <cstdint>

#include "geometry/export_mesh.h"
#include "host/object.h"

// Reads the skin of faces: per corner the three heaviest influences of at least 0.001, brought to the sum 1.
class eFaceSkinReader {
public:
    // `boneCount`: entries of the bone table that the numbers must lie in. `weights` must outlive the reader.
    eFaceSkinReader(const host::ISkinContextData& ownWeights, int ownBoneCount)
        : weights(ownWeights), boneCount(ownBoneCount) {}

    // `vertices` are the three numbers within the node's own mesh, in the stored corner order. Raises
    // `bonesPerVertex` to 2 or 3 where a corner needs it.
    eExportFaceSkin ReadFaceSkin(const std::uint32_t (&vertices)[3], int& bonesPerVertex);

    // True once an influence was left out because the table lacks its bone.
    bool HasLeftOutBones() const { return leftOutBones; }

private:
    // One corner's influences, heaviest first; of equal weights the one that came first.
    struct eHeaviest {
        int bones[kInfluencesPerCorner];
        float weights[kInfluencesPerCorner];
        int count = 0;

        void Add(int bone, float weight);
    };

    eHeaviest ReadCorner(int vertex);

    const host::ISkinContextData& weights;
    int boneCount;
    bool leftOutBones = false;
};
