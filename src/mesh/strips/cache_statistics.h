#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Vertices in the cache that the triangles of a mesh are ordered for.
inline constexpr int kTargetCacheSize = 24;

// What a triangle list costs a graphics card that keeps the last transformed vertices in a first-in-first-out
// cache.
struct eCacheStatistics {
    std::size_t triangles = 0;
    std::size_t vertices = 0;  // different ones that the list uses
    std::size_t misses = 0;    // vertices that had to be transformed

    // Average cache misses per triangle: 3 without any reuse, near 0.5 at best on a large closed mesh. 0 for
    // an empty list.
    double MissesPerTriangle() const;  // ACMR
    // Average transforms per vertex: 1 if each vertex is transformed once. 0 for an empty list.
    double MissesPerVertex() const;  // ATVR

    // Of lists that are drawn one after the other, with nothing of one left in the cache for the next.
    eCacheStatistics& operator+=(const eCacheStatistics& other);
};

// Simulates a cache of `cacheSize` vertices, at least 1, over `indices`, three per triangle. A hit leaves the
// order of the cache as it is. Linear.
eCacheStatistics SimulateVertexCache(std::span<const std::uint16_t> indices, std::size_t cacheSize);
