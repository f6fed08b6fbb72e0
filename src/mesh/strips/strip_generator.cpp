#include "mesh/strips/strip_generator.h"

#include <algorithm>
#include <span>
#include <vector>

#include "base/diagnostics.h"
#include "mesh/strips/strip_adjacency.h"
#include "mesh/strips/strip_cut.h"
#include "mesh/strips/strip_growth.h"
#include "mesh/strips/strip_order.h"
#include "mesh/strips/strip_validation.h"

int stripCacheSize = 24;

namespace {

constexpr int cacheMargin = 6;

// Strips are cut and ordered for a cache somewhat smaller than the real one.
std::size_t UsableCacheSize(int cacheSize) {
    return cacheSize < cacheMargin + 2 ? 1 : static_cast<std::size_t>(cacheSize - cacheMargin);
}

// The indices of all real faces, piece after piece.
std::vector<std::uint16_t> LayOut(const eStripList& pieces, std::span<const std::uint32_t> order) {
    std::vector<std::uint16_t> indices;
    indices.reserve(3 * pieces.FaceCount());
    for (const std::uint32_t piece : order) {
        for (const eStripTriangle& face : pieces[piece]) {
            if (!face.isFake) {
                indices.insert(indices.end(), std::begin(face.v), std::end(face.v));
            }
        }
    }
    return indices;
}

std::vector<std::uint16_t> Stripify(std::span<const std::uint16_t> indices, std::size_t cacheSize,
                                    int maxIndex) {
    const eStripAdjacency adjacency = BuildStripifyInfo(indices, maxIndex);
    if (adjacency.faces.empty()) {
        return {};
    }
    const eStripList pieces = CutStrips(GrowStrips(adjacency), cacheSize);
    return LayOut(pieces, OrderPieces(pieces, cacheSize, maxIndex));
}

std::unique_ptr<ePrimitiveGroup[]> MakeListGroup(const std::vector<std::uint16_t>& indices) {
    auto groups = std::make_unique<ePrimitiveGroup[]>(1);
    groups[0].numIndices = static_cast<unsigned>(indices.size());
    groups[0].indices = std::make_unique<std::uint16_t[]>(indices.size());
    std::copy(indices.begin(), indices.end(), groups[0].indices.get());
    return groups;
}

}  // namespace

bool GenerateStrips(const std::uint16_t* indices, unsigned numIndices,
                    std::unique_ptr<ePrimitiveGroup[]>& groups, std::uint16_t& numGroups, bool validate) {
    groups.reset();
    numGroups = 0;
    const std::span<const std::uint16_t> input(indices, numIndices);
    if (input.empty() || input.size() / 3 > maxStripFaces) {
        return false;
    }
    const int maxIndex = *std::max_element(input.begin(), input.end());
    const std::vector<std::uint16_t> output = Stripify(input, UsableCacheSize(stripCacheSize), maxIndex);
    if (output.empty() || (validate && !ValidateTriangles(input, output))) {
        return false;
    }
    groups = MakeListGroup(output);
    numGroups = 1;
    return true;
}

void RemapIndices(const ePrimitiveGroup* groups, std::uint16_t numGroups, std::uint16_t numVerts,
                  std::unique_ptr<ePrimitiveGroup[]>& remapped) {
    std::vector<int> cache(numVerts, -1);
    int counter = 0;
    remapped = std::make_unique<ePrimitiveGroup[]>(numGroups);
    for (std::size_t group = 0; group < numGroups; ++group) {
        const ePrimitiveGroup& from = groups[group];
        ePrimitiveGroup& to = remapped[group];
        to.type = from.type;
        to.numIndices = from.numIndices;
        to.indices = std::make_unique<std::uint16_t[]>(from.numIndices);
        for (unsigned i = 0; i < from.numIndices; ++i) {
            if (from.indices[i] >= numVerts) {
                Fail(__FILE__, __LINE__, "RemapIndices: an index is beyond the vertices");
            }
            int& newIndex = cache[from.indices[i]];
            if (newIndex < 0) {
                newIndex = counter++;
            }
            to.indices[i] = static_cast<std::uint16_t>(newIndex);
        }
    }
}
