// Cache misses by simulation.
#include "mesh/strips/cache_statistics.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Would catch: a cache that moves a vertex to the front on a hit, one that is a place too large or too small,
// and vertices counted by the highest number.
TEST(CacheStatistics, CountsMissesOfAFirstInFirstOutCache) {
    // 0 is used again before 3 pushes it out all the same; 1 is still there, 0 has to come back.
    const std::vector<std::uint16_t> indices{0, 1, 2, 0, 1, 3, 1, 9, 0};
    const eCacheStatistics statistics = SimulateVertexCache(indices, 3);
    EXPECT_EQ(statistics.triangles, 3u);
    EXPECT_EQ(statistics.vertices, 5u);
    EXPECT_EQ(statistics.misses, 6u);
    EXPECT_DOUBLE_EQ(statistics.MissesPerTriangle(), 2.0);
    EXPECT_DOUBLE_EQ(statistics.MissesPerVertex(), 1.2);

    EXPECT_EQ(SimulateVertexCache(indices, 4).misses, 5u + 1u);
    EXPECT_EQ(SimulateVertexCache(indices, 5).misses, 5u);
    EXPECT_EQ(SimulateVertexCache(indices, 1).misses, 9u);

    EXPECT_EQ(SimulateVertexCache({}, 24).MissesPerTriangle(), 0.0);
    EXPECT_EQ(SimulateVertexCache({}, 24).MissesPerVertex(), 0.0);
}

}  // namespace
