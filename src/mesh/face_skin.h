#pragma once

#include <utility>
#include <vector>

#include "host/object.h"
#include "mesh/export_mesh.h"

// Reads the skin of faces: per corner the three heaviest influences of at least 0.001, brought to the sum 1.
// Keeps its scratch list from corner to corner.
class eFaceSkinReader {
public:
    explicit eFaceSkinReader(const host::ISkinContextData& skin) : skin_(skin) {}

    // `vertices` are the three numbers within the node's own mesh, in the stored corner order. Raises
    // `bonesPerVertex` to 2 or 3 where a corner needs it.
    eExportFaceSkin ReadFaceSkin(const std::uint32_t (&vertices)[3], int& bonesPerVertex);

private:
    void ReadCorner(int vertex, std::uint8_t (&bones)[kInfluencesPerCorner],
                    float (&weights)[kInfluencesPerCorner], int& bonesPerVertex);

    const host::ISkinContextData& skin_;
    std::vector<std::pair<int, float>> influences_;
};
