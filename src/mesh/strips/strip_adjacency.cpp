#include "mesh/strips/strip_adjacency.h"

#include <array>
#include <utility>

#include "mesh/strips/strip_messages.h"
#include "mesh/strips/strip_triangle_set.h"

namespace {

// Both sides run from `start` to `end`.
struct eStripEdge {
    eStripSide side0;  // of the first face, which gives the direction
    eStripSide side1;  // of the second face, or `noStripSide`
    std::uint16_t start;
    std::uint16_t end;
};

// All edges by their pair of vertices; an edge is numbered by when it came up first. Each hangs on the one of
// its vertices that has fewer corners, so the middle of a fan has no long chain: all searches together take
// the time of the edges on a surface, and at the worst that of their number to the power of 1.5 (Chiba and
// Nishizeki, "Arboricity and Subgraph Listing Algorithms", 1985).
class eEdgeTable {
public:
    eEdgeTable(std::span<const std::uint16_t> indices, int maxIndex)
        : corners(static_cast<std::size_t>(maxIndex) + 1), newest(corners.size(), noEdge) {
        for (const std::uint16_t vertex : indices) {
            ++corners[vertex];
        }
        // Two faces share an edge; some have one.
        const std::size_t likely = indices.size() / 2 + indices.size() / 16;
        edges.reserve(likely);
        links.reserve(likely);
    }

    // The number of the edge between two vertices; a new edge gets `side`, which runs from `start` to `end`,
    // as its first.
    std::uint32_t FindOrAdd(std::uint16_t start, std::uint16_t end, eStripSide side, bool& isNew) {
        std::uint16_t a = start;
        std::uint16_t b = end;
        if (corners[b] < corners[a] || (corners[b] == corners[a] && b < a)) {
            std::swap(a, b);
        }
        for (std::uint32_t edge = newest[a]; edge != noEdge; edge = links[edge].older) {
            if (links[edge].vertex == b) {
                isNew = false;
                return edge;
            }
        }
        isNew = true;
        links.push_back({newest[a], b});
        newest[a] = static_cast<std::uint32_t>(edges.size());
        edges.push_back({side, noStripSide, start, end});
        return newest[a];
    }

    std::vector<eStripEdge> edges;

private:
    static constexpr std::uint32_t noEdge = ~std::uint32_t{0};

    struct eLink {
        std::uint32_t older;   // the edge before on the same vertex
        std::uint16_t vertex;  // at the other end
    };

    std::vector<std::uint32_t> corners;  // per vertex
    std::vector<std::uint32_t> newest;   // per vertex the last edge that hangs on it
    std::vector<eLink> links;            // per edge
};

class eAdjacencyBuilder {
public:
    eAdjacencyBuilder(std::span<const std::uint16_t> someIndices, int ownMaxIndex)
        : indices(someIndices),
          maxIndex(ownMaxIndex),
          table(someIndices, maxIndex),
          triangles(someIndices.size() / 3) {}

    eStripAdjacency Build() {
        CollectFaces();
        LinkFaces();
        ListSpokes();
        return std::move(result);
    }

private:
    void CollectFaces();
    void AddFace(std::uint16_t v0, std::uint16_t v1, std::uint16_t v2);
    void LinkFaces();
    void ListSpokes();

    std::span<const std::uint16_t> indices;
    int maxIndex;
    eEdgeTable table;
    eTriangleSet triangles;
    std::vector<std::array<std::uint32_t, 3>> edgesOfFace;
    eStripAdjacency result;
};

void eAdjacencyBuilder::CollectFaces() {
    result.faces.reserve(indices.size() / 3);
    edgesOfFace.reserve(indices.size() / 3);
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        if (indices[i] != indices[i + 1] && indices[i + 1] != indices[i + 2] &&
            indices[i + 2] != indices[i]) {
            AddFace(indices[i], indices[i + 1], indices[i + 2]);
        }
    }
}

void eAdjacencyBuilder::AddFace(std::uint16_t v0, std::uint16_t v1, std::uint16_t v2) {
    const std::array<std::uint16_t, 3> v{v0, v1, v2};
    std::array<std::uint32_t, 3> edgesOfThis{};
    std::array<bool, 3> isSecond{};
    for (int i = 0; i < 3; ++i) {
        const auto side = static_cast<std::size_t>(i);
        const eStripSide own = MakeSide(result.faces.size(), i, false);
        bool isNew = false;
        edgesOfThis[side] = table.FindOrAdd(v[side], v[static_cast<std::size_t>(NextCorner(i))], own, isNew);
        eStripEdge& edge = table.edges[edgesOfThis[side]];
        if (isNew) {
            continue;
        }
        if (edge.side1 == noStripSide) {
            edge.side1 = v[side] == edge.start ? own : Reversed(own);
            isSecond[side] = true;
        } else {
            stripMessageSink("BuildStripifyInfo: > 2 triangles on an edge... uncertain consequences\n");
        }
    }
    if (triangles.Insert(v0, v1, v2)) {
        result.faces.push_back({{noStripSide, noStripSide, noStripSide}, {v0, v1, v2}, 0});
        edgesOfFace.push_back(edgesOfThis);
        return;
    }
    // A repetition finds all its edges there, so it leaves no edge behind, only places as second face.
    for (std::size_t side = 0; side < 3; ++side) {
        if (isSecond[side]) {
            table.edges[edgesOfThis[side]].side1 = noStripSide;
        }
    }
}

void eAdjacencyBuilder::LinkFaces() {
    for (std::size_t f = 0; f < result.faces.size(); ++f) {
        eStripFace& face = result.faces[f];
        for (int side = 0; side < 3; ++side) {
            const eStripEdge& edge = table.edges[edgesOfFace[f][static_cast<std::size_t>(side)]];
            if (FaceOf(edge.side0) == f) {
                face.across[side] = edge.side1;
            } else if (face.v[side] == edge.start) {
                face.across[side] = edge.side0;
            } else {
                face.across[side] = Reversed(edge.side0);
                face.againstEdge = static_cast<std::uint8_t>(face.againstEdge | 1 << side);
            }
        }
    }
}

void eAdjacencyBuilder::ListSpokes() {
    // Counted, summed up to the end of each vertex's run, then filled from the oldest edge at the end of the
    // run to the newest at its beginning.
    result.firstSpoke.assign(static_cast<std::size_t>(maxIndex) + 2, 0);
    for (const eStripEdge& edge : table.edges) {
        if (edge.side1 != noStripSide) {
            ++result.firstSpoke[edge.start];
            ++result.firstSpoke[edge.end];
        }
    }
    std::uint32_t sum = 0;
    for (std::uint32_t& end : result.firstSpoke) {
        end = sum += end;
    }
    result.spokes.resize(sum);
    for (const eStripEdge& edge : table.edges) {
        if (edge.side1 != noStripSide) {
            result.spokes[--result.firstSpoke[edge.start]] = {edge.side0, edge.side1};
            result.spokes[--result.firstSpoke[edge.end]] = {Reversed(edge.side0), Reversed(edge.side1)};
        }
    }
}

}  // namespace

eStripAdjacency BuildStripifyInfo(std::span<const std::uint16_t> indices, int maxIndex) {
    return eAdjacencyBuilder(indices, maxIndex).Build();
}
