// Runs the strip generator and gathers what it gives and says.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "mesh/strips/strip_generator.h"
#include "mesh/strips/strip_messages.h"

struct eStripRun {
    bool succeeded = false;
    std::vector<std::uint16_t> indices;
    std::string messages;
};

inline std::vector<std::uint16_t> IndicesOf(const ePrimitiveGroup& group) {
    return {group.indices.get(), group.indices.get() + group.numIndices};
}

inline eStripRun RunStrips(const std::vector<std::uint16_t>& indices, int cacheSize = 24) {
    static std::string messages;
    messages.clear();
    const eStripMessageSink sink = stripMessageSink;
    const int previousSize = stripCacheSize;
    stripMessageSink = [](const char* text) { messages += text; };
    stripCacheSize = cacheSize;
    eStripRun run;
    std::unique_ptr<ePrimitiveGroup[]> groups;
    std::uint16_t numGroups = 0;
    run.succeeded =
        GenerateStrips(indices.data(), static_cast<unsigned>(indices.size()), groups, numGroups, true);
    if (run.succeeded) {
        run.indices = IndicesOf(groups[0]);
    }
    stripCacheSize = previousSize;
    stripMessageSink = sink;
    run.messages = messages;
    return run;
}

inline std::vector<std::array<std::uint16_t, 3>> SortedTriangles(const std::vector<std::uint16_t>& indices) {
    std::vector<std::array<std::uint16_t, 3>> triangles;
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        triangles.push_back({indices[i], indices[i + 1], indices[i + 2]});
    }
    std::sort(triangles.begin(), triangles.end());
    return triangles;
}
