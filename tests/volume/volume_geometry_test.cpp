#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "support/scene_builder.h"
#include "volume/convexity.h"
#include "volume/fitted_box.h"
#include "volume/polyhedron_image.h"

namespace {

using host::Mesh;
using host::Point2;
using host::Point3;

// A vertex just above or below the tolerance of 0.01: a coarse look beforehand must not lose the one above.
TEST(Convexity, DecidesCloseToTheTolerance) {
    for (const float slope : {0.0095F, 0.0099F, 0.0102F, 0.0105F, 0.012F}) {
        const Mesh mesh =
            support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {10, 0, 10 * slope}}, {{0, 1, 2}});
        for (const float scale : {1e-18F, 1.0F, 1e6F}) {
            host::Mesh scaled = mesh;
            for (Point3& p : scaled.verts) {
                p = p * scale;
            }
            EXPECT_EQ(IsConvex(scaled), slope < 0.01F) << slope << " at " << scale;
        }
    }
    EXPECT_TRUE(IsConvex(Mesh()));
    // A long strip, with the vertex that stands above far behind all others.
    Mesh strip = support::GridMesh(300, 1);
    EXPECT_TRUE(IsConvex(strip));
    strip.verts.push_back({0, 0, 5});
    EXPECT_FALSE(IsConvex(strip));
}

TEST(FittedBox, KeepsTheFirstOfEqualAreasAndFindsATurnedOne) {
    const std::vector<Point2> square{{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    const eFittedBox aligned = FitBox(square);
    EXPECT_EQ(aligned.axis.x, 1);
    EXPECT_EQ(aligned.axis.y, 0);
    EXPECT_FLOAT_EQ(aligned.extent.x, 1);
    const std::vector<Point2> turned{{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
    const eFittedBox diagonal = FitBox(turned);
    EXPECT_NEAR(diagonal.axis.x, std::sqrt(0.5), 0.01);
    EXPECT_NEAR(4 * diagonal.extent.x * diagonal.extent.y, 2, 0.02);
    EXPECT_NEAR(diagonal.center.x, 0, 1e-6);
}

TEST(PolyhedronImage, HasTheToldLayoutAndReadsBack) {
    EXPECT_EQ(MakePolyhedronImage(Mesh(), {}, 1).size(), 28U);
    Mesh mesh = support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 2, 0}}, {{0, 1, 2}});
    mesh.faces[0].setMatID(1);
    const std::string text = HexText(MakePolyhedronImage(mesh, host::TransMatrix({0, 0, 1}), 0.5F));
    EXPECT_EQ(text,
              "45564c4d"
              "564552540300000000000000000000000000003f0000003f000000000000003f000000000000803f0000003f"
              "494e445803000000020001000000"
              "534944450100000002");
    std::string problem;
    EXPECT_TRUE(ReadPolyhedron(text, problem)) << problem;
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(ReadPolyhedron(text.substr(0, length), problem)) << length;
    }
    EXPECT_FALSE(ReadPolyhedron(text + "00", problem));
}

}  // namespace
