#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "geometry/export_mesh.h"
#include "host/object.h"

// Per bone of the skin its number in the table of a mesh that may be another node's: 1 for the first entry, 0
// for a bone that the table lacks. The two may list their bones in different orders.
std::vector<std::uint8_t> NumbersInTable(const host::ISkin& skin, const std::vector<host::INode*>& table);

// Reads the skin of vertices: the three heaviest influences of at least 0.001, brought to the sum 1.
class eVertexSkinReader {
public:
    // `tableNumbers`: the number in the mesh's bone table of each bone of the skin that the weights belong
    // to (NumbersInTable). `weights` must outlive the reader.
    eVertexSkinReader(const host::ISkinContextData& weights, std::vector<std::uint8_t> tableNumbers,
                      std::size_t vertexCount);

    // Fills the record at the first call for the vertex. `vertex` is its number within the node's own mesh.
    // Raises `bonesPerVertex` to 2 or 3 where the vertex needs it.
    void Read(std::uint32_t vertex, eExportVertexSkin& skin, int& bonesPerVertex) {
        if (!isRead[vertex]) {
            isRead[vertex] = true;
            ReadAnew(static_cast<int>(vertex), skin, bonesPerVertex);
        }
    }

    // The bones of the skin whose influences were left out because the table lacks them, in rising order.
    const std::set<int>& LeftOutBones() const { return leftOutBones; }

private:
    // The influences of a vertex, heaviest first; of equal weights the one that came first.
    struct eHeaviest {
        std::uint8_t bones[kInfluencesPerCorner];  // numbers in the table
        float weights[kInfluencesPerCorner];
        int count = 0;

        void Add(std::uint8_t bone, float weight);
    };

    eHeaviest HeaviestOf(int vertex);
    void ReadAnew(int vertex, eExportVertexSkin& skin, int& bonesPerVertex);

    const host::ISkinContextData& weights;
    std::vector<std::uint8_t> tableNumbers;
    std::vector<bool> isRead;
    std::set<int> leftOutBones;
};
