#include "mesh/build/vertex_grid.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "mesh/build/vertex_order.h"

namespace {

constexpr double kCellsPerMetre = 64;
// Cells have numbers of 32 bits.
constexpr float kFarthest = 1e7F;
// The order compares in single precision.
constexpr double kReach = kWeldTolerance * 1.01;

constexpr std::uint32_t kFreeSlot = 0xFFFFFFFFU;
constexpr std::uint32_t kTagBits = 0xFFFF0000U;
constexpr std::uint16_t kNoVertex = 0xFFFF;

bool IsWithin(const host::Point3& p) {
    return std::fabs(p.x) < kFarthest && std::fabs(p.y) < kFarthest && std::fabs(p.z) < kFarthest;
}

// The cells that an edge of the box of the tolerance around a position goes through, and the position's own.
// Cut towards 0, so that the cells at the planes through the origin are of twice the width.
struct eSpan {
    explicit eSpan(float coordinate)
        : low(static_cast<std::int32_t>(coordinate * kCellsPerMetre - kReach * kCellsPerMetre)),
          own(static_cast<std::int32_t>(coordinate * kCellsPerMetre)),
          high(static_cast<std::int32_t>(coordinate * kCellsPerMetre + kReach * kCellsPerMetre)) {}

    std::int32_t low, own, high;
};

}  // namespace

// Half of the slots stay free at the worst.
eVertexGrid::eVertexGrid(std::size_t positions, std::size_t vertices)
    : slots(std::bit_ceil(2 * positions + 1), kFreeSlot) {
    next.reserve(vertices);
}

bool eVertexGrid::Gather(const host::Point3& position, eNeighbours& around) const {
    if (!IsWithin(position)) {
        return false;
    }
    const eSpan x(position.x), y(position.y), z(position.z);
    // The own cell last, so that its slot stays in `around`.
    for (eCell cell{x.low, 0, 0}; cell.x <= x.high; ++cell.x) {
        for (cell.y = y.low; cell.y <= y.high; ++cell.y) {
            for (cell.z = z.low; cell.z <= z.high; ++cell.z) {
                if (cell != eCell{x.own, y.own, z.own} && !GatherCell(cell, around)) {
                    return false;
                }
            }
        }
    }
    return GatherCell({x.own, y.own, z.own}, around);
}

// Cells of one tag may share a slot.
inline bool eVertexGrid::GatherCell(const eCell& cell, eNeighbours& around) const {
    std::uint64_t hash = static_cast<std::uint32_t>(cell.x) * 0x9E3779B97F4A7C15U;
    hash = (hash ^ static_cast<std::uint32_t>(cell.y)) * 0xC2B2AE3D27D4EB4FU;
    hash = (hash ^ hash >> 32 ^ static_cast<std::uint32_t>(cell.z)) * 0x9E3779B97F4A7C15U;
    around.tag = static_cast<std::uint32_t>(hash >> 32) & kTagBits;
    const std::size_t mask = slots.size() - 1;
    around.slot = hash >> 32 & mask;
    while (slots[around.slot] != kFreeSlot && (slots[around.slot] & kTagBits) != around.tag) {
        around.slot = (around.slot + 1) & mask;
    }
    if (slots[around.slot] == kFreeSlot) {
        return true;
    }
    for (auto number = static_cast<std::uint16_t>(slots[around.slot]); number != kNoVertex;
         number = next[number]) {
        if (around.count == around.numbers.size()) {
            return false;
        }
        around.numbers[around.count++] = number;
    }
    return true;
}

void eVertexGrid::Add(const eNeighbours& around) {
    std::uint32_t& slot = slots[around.slot];
    const auto number = static_cast<std::uint32_t>(next.size());
    next.push_back(slot != kFreeSlot ? static_cast<std::uint16_t>(slot) : kNoVertex);
    slot = around.tag | number;
}
