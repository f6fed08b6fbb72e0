#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "mesh/strips/strip_adjacency.h"

// How many faces a strip can have at most: a strip never leaves the faces that hang together over edges. The
// components into which the uncommitted faces fall are found anew each time half of the faces have gone, and
// counted down in between, so the bound always holds and is mostly near.
//
// Cost: n log n over all commits; 17 bytes per face.
class eStripComponents {
public:
    // Reads `someAdjacency`, which outlives this.
    explicit eStripComponents(const eStripAdjacency& someAdjacency);

    // Takes away faces that were not taken away before.
    void Take(std::span<const std::uint32_t> taken);

    std::uint32_t LongestStrip() const { return largest; }

private:
    void FindComponents();
    void LowerLargest();
    void Join(std::uint32_t a, std::uint32_t b);
    std::uint32_t Root(std::uint32_t face);

    const eStripAdjacency& adjacency;
    std::vector<std::uint32_t> faces;  // uncommitted when the components were found
    std::vector<std::uint8_t> isTaken;
    std::vector<std::uint32_t> parent;       // per face: nearer to the root of its component, or the root
    std::vector<std::uint32_t> sizes;        // per root: faces left in the component
    std::vector<std::uint32_t> countOfSize;  // components with so many faces left
    std::size_t left = 0;
    std::uint32_t largest = 0;
};
