#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "mesh/strips/next_free.h"
#include "mesh/strips/strip_adjacency.h"

// Spreads the faces from which strips start over the mesh: the first seed lies on the border if there is one,
// the others at steps of a tenth of the face list, as near behind as a face is free.
class eStripSeeds {
public:
    // Reads `someAdjacency` when asked for the first seed. 8 bytes per face.
    explicit eStripSeeds(const eStripAdjacency& someAdjacency);

    std::optional<std::uint32_t> NextSeedFace();
    void Take(std::uint32_t face) { free.Take(face); }

private:
    std::optional<std::uint32_t> FirstSeedFace() const;

    const eStripAdjacency& adjacency;
    eNextFree free;
    float seedPosition = 0.0f;  // part of the face list, 0 to 1
    bool firstSeed = true;
};
