#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// A set of triangles, each told apart by its three indices in order. Open addressing with at most half of the
// slots in use: 16 to 32 bytes per triangle, no allocation after construction.
class eTriangleSet {
public:
    explicit eTriangleSet(std::size_t triangles) {
        std::size_t size = 16;
        while (size < 2 * triangles) {
            size *= 2;
        }
        slots.assign(size, freeSlot);
    }

    // False if the triangle was there before.
    bool Insert(std::uint16_t v0, std::uint16_t v1, std::uint16_t v2) {
        std::uint64_t& slot = slots[Find(Key(v0, v1, v2))];
        const bool isNew = slot == freeSlot;
        slot = Key(v0, v1, v2);
        return isNew;
    }

    bool Has(std::uint16_t v0, std::uint16_t v1, std::uint16_t v2) const {
        return slots[Find(Key(v0, v1, v2))] != freeSlot;
    }

private:
    static constexpr std::uint64_t freeSlot = ~std::uint64_t{0};

    static std::uint64_t Key(std::uint16_t v0, std::uint16_t v1, std::uint16_t v2) {
        return std::uint64_t{v0} << 32 | std::uint64_t{v1} << 16 | v2;
    }

    std::size_t Find(std::uint64_t key) const {
        std::uint64_t hash = key * 0x9e3779b97f4a7c15u;
        hash ^= hash >> 32;
        std::size_t slot = hash & (slots.size() - 1);
        while (slots[slot] != freeSlot && slots[slot] != key) {
            slot = (slot + 1) & (slots.size() - 1);
        }
        return slot;
    }

    std::vector<std::uint64_t> slots;
};
