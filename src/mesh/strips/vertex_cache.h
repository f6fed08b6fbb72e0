#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

// A first-in-first-out cache of vertices below `vertexCount`. A vertex in the cache keeps its place when it
// is used again. Looking up and adding take constant time.
class eVertexCache {
public:
    static constexpr int noVertex = -1;

    eVertexCache(std::size_t cacheSize, std::size_t vertexCount)
        : entries(std::min(cacheSize, vertexCount), noVertex), contains(vertexCount) {}

    bool Has(std::uint16_t vertex) const { return contains[vertex] != 0; }

    // Adds a vertex that is not in the cache; the result is the one that fell out, or `noVertex`.
    int Add(std::uint16_t vertex) {
        const int oldest = entries[place];
        if (oldest != noVertex) {
            contains[static_cast<std::size_t>(oldest)] = 0;
        }
        contains[vertex] = 1;
        entries[place] = vertex;
        place = place + 1 == entries.size() ? 0 : place + 1;
        return oldest;
    }

    // The vertices in the cache, in no order, with `noVertex` in unused places.
    const std::vector<int>& Entries() const { return entries; }

private:
    std::vector<int> entries;
    std::vector<std::uint8_t> contains;  // per vertex
    std::size_t place = 0;               // of the oldest entry
};
