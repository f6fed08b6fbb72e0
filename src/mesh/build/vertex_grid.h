#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/values.h"

// Vertices of a mesh by the cell of space in which they lie, to see which of them stand within the tolerance
// of the weld of a position. Cells are cubes with sides of 1/64 metre: most positions ask for one, and few
// vertices of a mesh in metres share it.
class eVertexGrid {
public:
    // What stands around a position.
    struct eNeighbours {
        std::array<std::uint16_t, 32> numbers;  // vertices that may be within the tolerance, and others
        std::size_t count = 0;
        std::size_t slot = 0;   // where a vertex at the position has its place
        std::uint32_t tag = 0;  // of its cell
    };

    // Room for so many positions, and vertices at them.
    eVertexGrid(std::size_t positions, std::size_t vertices);

    // False if there are more vertices than `around` holds, or if the position is no number or too far out.
    bool Gather(const host::Point3& position, eNeighbours& around) const;

    // Adds a vertex at the position of which `around` was gathered last. Vertices come by their numbers, from
    // 0.
    void Add(const eNeighbours& around);

private:
    struct eCell {
        std::int32_t x, y, z;

        friend bool operator==(const eCell&, const eCell&) = default;
    };

    bool GatherCell(const eCell& cell, eNeighbours& around) const;

    std::vector<std::uint32_t> slots;  // open addressing: tag of the cell, its last vertex; a power of two
    std::vector<std::uint16_t> next;   // by number: the vertex before it in the cell
};
