#include "mesh/strips/cache_statistics.h"

#include <algorithm>
#include <vector>

#include "mesh/strips/vertex_cache.h"

namespace {

double Ratio(std::size_t count, std::size_t total) {
    return total == 0 ? 0.0 : static_cast<double>(count) / static_cast<double>(total);
}

}  // namespace

double eCacheStatistics::MissesPerTriangle() const {
    return Ratio(misses, triangles);
}
double eCacheStatistics::MissesPerVertex() const {
    return Ratio(misses, vertices);
}

eCacheStatistics& eCacheStatistics::operator+=(const eCacheStatistics& other) {
    triangles += other.triangles;
    vertices += other.vertices;
    misses += other.misses;
    return *this;
}

eCacheStatistics SimulateVertexCache(std::span<const std::uint16_t> indices, std::size_t cacheSize) {
    eCacheStatistics statistics;
    if (indices.empty()) {
        return statistics;
    }
    const std::size_t vertexCount = *std::max_element(indices.begin(), indices.end()) + std::size_t{1};
    eVertexCache cache(cacheSize, vertexCount);
    std::vector<bool> isUsed(vertexCount);
    statistics.triangles = indices.size() / 3;
    for (const std::uint16_t vertex : indices) {
        if (!cache.Has(vertex)) {
            cache.Add(vertex);
            ++statistics.misses;
        }
        if (!isUsed[vertex]) {
            isUsed[vertex] = true;
            ++statistics.vertices;
        }
    }
    return statistics;
}
