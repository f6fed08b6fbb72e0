#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "mesh/strips/strip_adjacency.h"

// How many faces a strip can have at most: a strip never leaves the faces that hang together over edges. The
// components into which the uncommitted faces fall are found anew each time half of the faces have gone, and
// counted down in between, so the bound always holds and is mostly near.
//
// Cost: linear over all commits; 16 bytes per face.
class eStripComponents {
public:
    // Reads `someAdjacency`, which outlives this.
    explicit eStripComponents(const eStripAdjacency& someAdjacency);

    // Takes away faces that were not taken away before.
    void Take(std::span<const std::uint32_t> taken);

    std::uint32_t LongestStrip() const { return largest; }

private:
    struct eComponent {
        std::uint32_t partOf;  // nearer to the component that it was joined to, or itself
        std::uint32_t size;    // faces left
    };

    void Lessen(std::uint32_t whole, std::uint32_t faceCount);
    void FindComponents();
    void Flood(std::uint32_t face);
    void Join(std::uint32_t joined, std::uint32_t into);
    std::uint32_t Whole(std::uint32_t component);
    void LowerLargest();

    const eStripAdjacency& adjacency;
    std::vector<std::uint32_t> faces;        // uncommitted when the components were found
    std::vector<std::uint32_t> found;        // those of them that have a component
    std::vector<std::uint32_t> componentOf;  // per face
    std::vector<eComponent> components;
    std::vector<std::uint32_t> countOfSize;  // components with so many faces left
    std::size_t left = 0;
    std::uint32_t largest = 0;
};
