#include "mesh/build/weld.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

#include "geometry/vertex_layout.h"
#include "mesh/build/vertex_order.h"
#include "support/checksum.h"

namespace {

constexpr VertexFormat kSkinnedBump =
    VF_POSITION | VF_NORMAL | VF_COLOR | VF_TANGENT | 2U << kUvCountShift | 2U << kWeightCountShift;

// A vertex in which every channel counts.
eExportVertex FullVertex() {
    eExportVertex v;
    v.position = {1, 2, 3};
    v.weights[0] = 0.5F;
    v.weights[1] = 0.25F;
    v.boneIndices[0] = 1;
    v.normal = {0, 0, 1};
    v.color = 0xFF808080;
    v.uv0 = {0.25F, 0.5F};
    v.uv1 = {0.75F, 0.5F};
    v.subset = 1;
    v.tangent = {1, 0, 0, 1};
    v.smoothingGroup = 1;
    v.format = kSkinnedBump;
    return v;
}

// Where the change makes the vertex another one, and it comes first or last.
enum class eVerdict { Same, Before, Behind };

template <class Change>
eVerdict Verdict(Change change, VertexFormat format = kSkinnedBump) {
    eExportVertex a = FullVertex(), b = a;
    a.format = b.format = format;
    change(a);
    return VertexLess(a, b) ? eVerdict::Before : VertexLess(b, a) ? eVerdict::Behind : eVerdict::Same;
}

// Catches a channel that is not compared, compared without its tolerance, or in the wrong direction.
TEST(VertexOrder, EveryChannelDecidesBeyondItsTolerance) {
    const auto moved = [](float by, auto member) {
        return Verdict([&](eExportVertex& v) { member(v) += by; });
    };
    const auto expectTolerant = [&](const char* name, auto member) {
        EXPECT_EQ(moved(0.00095F, member), eVerdict::Same) << name;
        EXPECT_EQ(moved(-0.00095F, member), eVerdict::Same) << name;
        EXPECT_EQ(moved(0.00105F, member), eVerdict::Behind) << name;
        EXPECT_EQ(moved(-0.00105F, member), eVerdict::Before) << name;
    };
    expectTolerant("x", [](eExportVertex& v) -> float& { return v.position.x; });
    expectTolerant("z", [](eExportVertex& v) -> float& { return v.position.z; });
    expectTolerant("u0", [](eExportVertex& v) -> float& { return v.uv0.x; });
    expectTolerant("v1", [](eExportVertex& v) -> float& { return v.uv1.y; });
    expectTolerant("normal", [](eExportVertex& v) -> float& { return v.normal.y; });
    expectTolerant("tangent", [](eExportVertex& v) -> float& { return v.tangent.x; });
    expectTolerant("bitangent", [](eExportVertex& v) -> float& { return v.tangent.w; });

    EXPECT_EQ(Verdict([](eExportVertex& v) { ++v.subset; }), eVerdict::Behind);
    EXPECT_EQ(Verdict([](eExportVertex& v) { --v.color; }), eVerdict::Before);
    EXPECT_EQ(Verdict([](eExportVertex& v) { v.smoothingGroup = 2; }), eVerdict::Behind);
    EXPECT_EQ(Verdict([](eExportVertex& v) { v.boneIndices[1] = 1; }), eVerdict::Behind);
    EXPECT_NE(Verdict([](eExportVertex& v) { v.weights[1] = std::nextafter(0.25F, 1.0F); }), eVerdict::Same);
}

// Catches a weld that splits vertices by what their layout has no place for.
TEST(VertexOrder, ChannelsThatTheFormatLacksDoNotCount) {
    const VertexFormat plain = VF_POSITION | 1U << kUvCountShift;
    EXPECT_EQ(Verdict([](eExportVertex& v) { v.color = 0; }, plain), eVerdict::Same);
    EXPECT_EQ(Verdict([](eExportVertex& v) { v.normal = {1, 0, 0}; }, plain), eVerdict::Same);
    EXPECT_EQ(Verdict([](eExportVertex& v) { v.tangent = {}; }, plain), eVerdict::Same);
    EXPECT_EQ(Verdict([](eExportVertex& v) { v.weights[0] = 0; }, plain), eVerdict::Same);
}

// Catches comparisons of another number than the bytes give: the fourth bone byte is the highest, and
// weights are compared from their lowest byte on.
TEST(VertexOrder, InfluencesCompareAsBytes) {
    EXPECT_EQ(Verdict([](eExportVertex& v) {
                  v.boneIndices[0] = 0;
                  v.boneIndices[2] = 1;
              }),
              eVerdict::Behind);
    // 0.5 is 00 00 00 3F, its neighbour above 01 00 00 3F, 2.0 is 00 00 00 40.
    EXPECT_EQ(Verdict([](eExportVertex& v) { v.weights[0] = std::nextafter(0.5F, 1.0F); }), eVerdict::Behind);
    EXPECT_EQ(Verdict([](eExportVertex& v) { v.weights[0] = 2.0F; }), eVerdict::Behind);
}

// Catches every departure from the rule of the tree, which decides among near vertices: the sum is that of a
// tree that follows it word by word. Positions crowd so that chains of neighbours within the tolerance are
// common.
TEST(Weld, NumbersVerticesAsThePlainTree) {
    std::mt19937 random(7);
    std::uint64_t sum = 0;
    for (const float spacing : {0.0003F, 0.0007F, 0.0011F, 0.5F}) {
        for (const int cells : {3, 12, 60}) {
            eVertexWeld weld(2500, 2500);
            const auto cell = [&](int count) {
                return static_cast<float>(static_cast<int>(random() >> 8) % (count + 1));
            };
            for (int i = 0; i < 2500; ++i) {
                eExportVertex v = FullVertex();
                v.position.x = spacing * cell(cells);
                v.position.y = spacing * cell(cells);
                v.normal.x = spacing * cell(1);
                v.smoothingGroup = static_cast<std::uint32_t>(cell(1));
                sum = support::Checksum(std::array{weld.FindOrAdd(v)}, sum);
            }
        }
    }
    EXPECT_EQ(sum, 14330678759418319294U);
}

// Catches a near vertex that is not seen across a border of cells, or far out where there are none, and one
// that is lost among many at its place.
TEST(Weld, SeesNearVerticesWhereverTheyStand) {
    for (int axis = 0; axis < 3; ++axis) {
        for (const float border : {-0.5F, 0.0F, 0.015625F, 100.0F, 3e9F}) {
            eVertexWeld weld(100, 2);
            eExportVertex v = FullVertex();
            for (const float beside : {-0.0004F, 0.0004F}) {
                v.position[axis] = border + beside;
                EXPECT_EQ(weld.FindOrAdd(v), 0) << border;
            }
        }
    }
    eVertexWeld weld(100, 2);
    eExportVertex v = FullVertex();
    for (std::uint16_t i = 0; i < 50; ++i) {
        v.smoothingGroup = i;
        EXPECT_EQ(weld.FindOrAdd(v), i);
    }
    v.smoothingGroup = 7;
    EXPECT_EQ(weld.FindOrAdd(v), 7);
}

// Catches an index that wraps at 16 bits, a search that can't find the last vertices, and an unbalanced tree:
// sorted input would take quadratic time.
TEST(Weld, KeepsAsManyVerticesAsShowThatThereAreTooMany) {
    eVertexWeld weld(70000, 70000);
    eExportVertex v = FullVertex();
    for (int i = 0; i < 70000; ++i) {
        v.position.x = static_cast<float>(i);
        weld.FindOrAdd(v);
    }
    EXPECT_EQ(weld.Vertices().size(), eVertexWeld::kMostVertices);
    v.position.x = 65534;
    EXPECT_EQ(weld.FindOrAdd(v), 65534);
}

}  // namespace
