#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// The faces of one sub-mesh and who lies beside whom, in flat arrays.

// A side of a face and a direction along it, packed: face * 8 + side * 2 + against. Side i joins the corners
// i and i + 1 (the last one closes the ring); `against` is set for the direction from corner i + 1 to corner
// i. Flipping the lowest bit turns the direction round. Negative: no such side.
using eStripSide = std::int32_t;

constexpr eStripSide noStripSide = -1;
constexpr std::size_t maxStripFaces = (std::size_t{1} << 28) - 1;

constexpr eStripSide MakeSide(std::size_t face, int side, bool against) {
    return static_cast<eStripSide>(face << 3) | side << 1 | static_cast<int>(against);
}
constexpr std::uint32_t FaceOf(eStripSide side) {
    return static_cast<std::uint32_t>(side) >> 3;
}
constexpr int SideOf(eStripSide side) {
    return (side >> 1) & 3;
}
constexpr bool RunsAgainst(eStripSide side) {
    return (side & 1) != 0;
}
constexpr eStripSide Reversed(eStripSide side) {
    return side ^ 1;
}

constexpr int NextCorner(int corner) {
    return corner == 2 ? 0 : corner + 1;
}
constexpr int PreviousCorner(int corner) {
    return corner == 0 ? 2 : corner - 1;
}

struct eStripFace {
    // What lies across each side: the side of the other face over which it is entered, in the direction that
    // one has who leaves this face along its own side.
    eStripSide across[3];
    std::uint16_t v[3];
    // Bit i: side i runs against its edge, which has the direction of the first face that used it.
    std::uint8_t againstEdge;
    // Bit i: the face across side i sees this one too.
    std::uint8_t isMutual;
};

// An edge with two faces, seen from one of its vertices: the sides of both faces, running away from the
// vertex.
struct eStripSpoke {
    eStripSide side0;
    eStripSide side1;
};

struct eStripAdjacency {
    std::vector<eStripFace> faces;
    // The spokes of vertex v are those from `firstSpoke[v]` up to `firstSpoke[v + 1]`, newest edge first.
    // Edges with one face are left out: no strip starts there.
    std::vector<eStripSpoke> spokes;
    std::vector<std::uint32_t> firstSpoke;
};

// Takes three indices per triangle, none above `maxIndex`, and leaves out triangles with two equal indices
// and triangles that repeat the three indices of an earlier one in the same order. A third face on an edge
// sees the edge's first face across it; the first two go on seeing each other.
//
// Cost: linear on a surface (see eEdgeTable); about 34 bytes per triangle remain and 28 more are used
// meanwhile.
eStripAdjacency BuildStripifyInfo(std::span<const std::uint16_t> indices, int maxIndex);
