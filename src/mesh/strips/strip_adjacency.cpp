#include "mesh/strips/strip_adjacency.h"

#include <algorithm>
#include <array>
#include <set>

#include "mesh/strips/strip_messages.h"

namespace {

using eTriangle = std::array<std::uint16_t, 3>;

// Both sides run from `start` to `end`.
struct eStripEdge {
    eStripSide side0;     // of the first face, which gives the direction
    eStripSide side1;     // of the second face, or `noStripSide`
    std::uint32_t older;  // the edge before on the vertex that it hangs on
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
        edges.reserve(indices.size() / 2 + indices.size() / 16);
    }

    // The number of the edge between two vertices; a new edge gets `side`, which runs from `start` to `end`,
    // as its first.
    std::uint32_t FindOrAdd(std::uint16_t start, std::uint16_t end, eStripSide side) {
        const std::uint32_t atStart = corners[start];
        const std::uint32_t atEnd = corners[end];
        std::uint32_t& hook = newest[atStart < atEnd || (atStart == atEnd && start < end) ? start : end];
        for (std::uint32_t edge = hook; edge != noEdge; edge = edges[edge].older) {
            // One end is the same, so the others are told from one another by both together.
            if ((edges[edge].start ^ edges[edge].end) == (start ^ end)) {
                return edge;
            }
        }
        edges.push_back({side, noStripSide, hook, start, end});
        hook = static_cast<std::uint32_t>(edges.size() - 1);
        return hook;
    }

    std::vector<eStripEdge> edges;

private:
    static constexpr std::uint32_t noEdge = ~std::uint32_t{0};

    std::vector<std::uint32_t> corners;  // per vertex
    std::vector<std::uint32_t> newest;   // per vertex the last edge that hangs on it
};

class eAdjacencyBuilder {
public:
    eAdjacencyBuilder(std::span<const std::uint16_t> someIndices, int maxIndex)
        : indices(someIndices), table(someIndices, maxIndex) {
        result.faces.reserve(indices.size() / 3);
        result.firstSpoke.assign(static_cast<std::size_t>(maxIndex) + 2, 0);
    }

    eStripAdjacency Build() {
        for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
            const eTriangle v{indices[i], indices[i + 1], indices[i + 2]};
            if (v[0] != v[1] && v[1] != v[2] && v[2] != v[0]) {
                AddFace(v);
            }
        }
        ListSpokes();
        return std::move(result);
    }

private:
    using eEdgesOfFace = std::array<std::uint32_t, 3>;

    void AddFace(const eTriangle& v);
    bool IsRepetition(const eTriangle& v, const eEdgesOfFace& edges) const;
    void Join(eStripFace& face, eStripSide own, eStripEdge& edge);
    void ListSpokes();

    std::span<const std::uint16_t> indices;
    eEdgeTable table;
    std::set<eTriangle> third;  // the faces that came to an edge with two
    eStripAdjacency result;     // `firstSpoke` has the number of spokes until they are listed
};

void TellCrowdedEdge() {
    stripMessageSink("BuildStripifyInfo: > 2 triangles on an edge... uncertain consequences\n");
}

void eAdjacencyBuilder::AddFace(const eTriangle& v) {
    const std::size_t number = result.faces.size();
    const std::array<eStripSide, 3> own{MakeSide(number, 0, false), MakeSide(number, 1, false),
                                        MakeSide(number, 2, false)};
    const eEdgesOfFace edges{table.FindOrAdd(v[0], v[1], own[0]), table.FindOrAdd(v[1], v[2], own[1]),
                             table.FindOrAdd(v[2], v[0], own[2])};
    const bool isNew = table.edges[edges[0]].side0 == own[0] || table.edges[edges[1]].side0 == own[1] ||
                       table.edges[edges[2]].side0 == own[2];
    if (!isNew && IsRepetition(v, edges)) {
        return;
    }
    eStripFace face{{noStripSide, noStripSide, noStripSide}, {v[0], v[1], v[2]}, 0, 0};
    for (std::size_t side = 0; side < 3; ++side) {
        Join(face, own[side], table.edges[edges[side]]);
    }
    result.faces.push_back(face);
}

// Whether an earlier face has the same indices in the same order. It lies on all edges of this one, as first,
// second or third face.
bool eAdjacencyBuilder::IsRepetition(const eTriangle& v, const eEdgesOfFace& edges) const {
    const auto isThis = [&](eStripSide side) {
        return side >= 0 && std::ranges::equal(result.faces[FaceOf(side)].v, v);
    };
    const eStripEdge& edge = table.edges[edges[0]];
    if (!isThis(edge.side0) && !isThis(edge.side1) && !third.contains(v)) {
        return false;
    }
    for (const std::uint32_t of : edges) {
        if (table.edges[of].side1 != noStripSide) {
            TellCrowdedEdge();
        }
    }
    return true;
}

// Makes the new face see over its side `own` the first one on the edge, if that is another, and the first one
// see its second.
void eAdjacencyBuilder::Join(eStripFace& face, eStripSide own, eStripEdge& edge) {
    if (edge.side0 == own) {
        return;
    }
    const int side = SideOf(own);
    const int against = face.v[side] == edge.start ? 0 : 1;
    face.across[side] = edge.side0 ^ against;
    face.againstEdge = static_cast<std::uint8_t>(face.againstEdge | against << side);
    if (edge.side1 != noStripSide) {
        TellCrowdedEdge();
        third.insert({face.v[0], face.v[1], face.v[2]});
        return;
    }
    edge.side1 = own ^ against;
    eStripFace& first = result.faces[FaceOf(edge.side0)];
    first.across[SideOf(edge.side0)] = edge.side1;
    first.isMutual = static_cast<std::uint8_t>(first.isMutual | 1 << SideOf(edge.side0));
    face.isMutual = static_cast<std::uint8_t>(face.isMutual | 1 << side);
    ++result.firstSpoke[edge.start];
    ++result.firstSpoke[edge.end];
}

void eAdjacencyBuilder::ListSpokes() {
    // Summed up to the end of each vertex's run, then filled from the oldest edge at the end of the run to
    // the newest at its beginning.
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
