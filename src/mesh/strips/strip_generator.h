#pragma once

#include <cstdint>
#include <memory>

// Reorders the triangles of one sub-mesh for a graphics card with a small vertex cache. Strips are grown over
// the mesh's edges, cut to cache length, put in the order of the most simulated cache hits, and laid out flat
// as one triangle list. The result is a function of the indices and `stripCacheSize` alone.

// Size of the target's vertex cache in vertices. It stays set from call to call.
extern int stripCacheSize;

// A run of indices that is drawn with one call.
struct ePrimitiveGroup {
    int type = 0;  // 0: triangle list
    unsigned numIndices = 0;
    std::unique_ptr<std::uint16_t[]> indices;  // `numIndices` of them
};

// `indices` holds `numIndices` vertex numbers, three per triangle; one or two left over at the end are
// ignored. On success `groups` is a new array of `numGroups` = 1 triangle list: every triangle of the input
// once, with its three indices in the input's order, but without triangles that have two equal indices and
// without repetitions of the same three indices in the same order. With `validate` each triangle of the
// result is looked up among those of the input.
//
// False: no triangle was left, or the validation found a stranger; `groups` is then empty and `numGroups` 0.
//
// A line goes to standard output for each edge of a triangle that two earlier triangles share already.
//
// Cost: near n log n, a quarter of a microsecond to one per triangle; some 140 bytes of memory per triangle
// of a surface meanwhile.
bool GenerateStrips(const std::uint16_t* indices, unsigned numIndices,
                    std::unique_ptr<ePrimitiveGroup[]>& groups, std::uint16_t& numGroups, bool validate);

// Renumbers the vertices of `numGroups` groups in order of first use: `remapped` becomes a new array of as
// many groups with the same types and sizes. Every index lies below `numVerts`.
void RemapIndices(const ePrimitiveGroup* groups, std::uint16_t numGroups, std::uint16_t numVerts,
                  std::unique_ptr<ePrimitiveGroup[]>& remapped);
