#include "gltf/space.h"

#include <gmock/gmock.h>

#include "gltf/key_track.h"

namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

void ExpectSame(const host::DMatrix3& a, const host::DMatrix3& b) {
    for (std::size_t row = 0; row < 4; ++row) {
        EXPECT_THAT(a.rows[row], Pointwise(DoubleNear(1e-9), b.rows[row])) << row;
    }
}

TEST(Placement, IsTheMatrixAgain) {
    // All four ways to a quaternion, with scale and mirror.
    const gltf::eQuaternion turns[] = {
        {0.5, 0.5, 0.5, 0.5}, {0.8, 0.6, 0, 0}, {0, 0.8, 0.6, 0}, {0.6, 0, 0.8, 0}, {0.1, 0.1, 0.7, 0.7}};
    for (const gltf::eQuaternion& turn : turns) {
        for (const double depth : {3.0, -3.0}) {
            const host::DMatrix3 matrix =
                gltf::MatrixOf({.position = {1, 2, 3}, .rotation = turn, .scale = {2, 0.5, depth}});
            const gltf::ePlacement placement = gltf::PlacementOf(matrix);
            ExpectSame(MatrixOf(placement), matrix);
            EXPECT_FALSE(placement.isSheared);
        }
    }
}

TEST(Placement, TellsShear) {
    host::DMatrix3 matrix;
    matrix.rows[1] = {0.5, 1, 0};
    EXPECT_TRUE(gltf::PlacementOf(matrix).isSheared);
}

TEST(Placement, TakesTheRoundingOfTextForNone) {
    host::DMatrix3 matrix;
    matrix.rows = {{{0.7071, 0.7071, 0}, {-0.7071, 0.7071, 0}, {0, 0, 1}, {0, 0, 0}}};
    const gltf::ePlacement placement = gltf::PlacementOf(matrix);
    EXPECT_THAT(placement.scale, ElementsAre(1, 1, 1));
    EXPECT_FALSE(placement.isSheared);
}

TEST(KeyTrack, KeepsTheEndsOfWhatStandsStill) {
    gltf::eKeyTrack track(1);
    for (int frame = 0; frame < 8; ++frame) {
        track.Add(frame, std::vector<double>{frame < 3 ? 0.0 : frame < 5 ? frame : 4.0});
    }
    EXPECT_THAT(track.Frames(), ElementsAre(0, 2, 3, 4, 7));
    EXPECT_THAT(track.Values(), ElementsAre(0, 0, 3, 4, 4));
    EXPECT_FALSE(track.IsConstant());
}

}  // namespace
