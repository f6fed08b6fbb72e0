#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "support/ball_mesh.h"
#include "support/scene_builder.h"
#include "volume/convexity.h"
#include "volume/fitted_box.h"
#include "volume/polyhedron_image.h"

namespace {

using host::Mesh;
using host::Point2;
using host::Point3;

// A ball, one vertex of which is moved towards its middle by that share.
Mesh DentedBall(std::size_t triangles, float dent) {
    Mesh mesh = support::BallMesh(triangles);
    mesh.verts[mesh.verts.size() / 2] = mesh.verts[mesh.verts.size() / 2] * (1 - dent);
    return mesh;
}

// The test as it is told, without any short cut.
bool IsConvexPlain(const Mesh& mesh) {
    for (const host::Face& face : mesh.faces) {
        const Point3 p0 = mesh.verts[face.v[0]];
        const Point3 n = host::Normalize(host::CrossProd(host::Normalize(mesh.verts[face.v[1]] - p0),
                                                         host::Normalize(mesh.verts[face.v[2]] - p0)));
        for (std::size_t v = 0; v < mesh.verts.size(); ++v) {
            const bool isOfFace = v == face.v[0] || v == face.v[1] || v == face.v[2];
            if (!isOfFace && host::DotProd(host::Normalize(mesh.verts[v] - p0), n) > 0.01F) {
                return false;
            }
        }
    }
    return true;
}

// The quick test must give the plain test's verdict, near the tolerance and at any size.
TEST(Convexity, AgreesWithThePlainTest) {
    int convex = 0;
    for (const float scale : {1e-18F, 1e-3F, 1.0F, 1e6F}) {
        for (const float dent : {0.0F, 0.001F, 0.002F, 0.004F, 0.01F, 0.3F, -0.3F}) {
            Mesh mesh = DentedBall(560, dent);
            for (Point3& p : mesh.verts) {
                p = p * scale;
            }
            EXPECT_EQ(IsConvex(mesh), IsConvexPlain(mesh)) << "scale " << scale << " dent " << dent;
            convex += IsConvexPlain(mesh) ? 1 : 0;
        }
    }
    EXPECT_GT(convex, 0);
    EXPECT_TRUE(IsConvex(Mesh()));
    std::mt19937 random(1);
    std::uniform_real_distribution<float> noise(-0.02F, 0.02F);
    for (int round = 0; round < 20; ++round) {
        Mesh mesh = support::BallMesh(160);
        for (Point3& p : mesh.verts) {
            p += Point3{noise(random), noise(random), noise(random)};
        }
        EXPECT_EQ(IsConvex(mesh), IsConvexPlain(mesh)) << round;
    }
}

// A vertex just above or below the tolerance of 0.01: a coarse look beforehand must not lose the one above.
TEST(Convexity, DecidesCloseToTheTolerance) {
    for (const float slope : {0.0095F, 0.0099F, 0.0102F, 0.0105F, 0.012F}) {
        const Mesh mesh =
            support::TriangleMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {10, 0, 10 * slope}}, {{0, 1, 2}});
        EXPECT_EQ(IsConvex(mesh), slope < 0.01F) << slope;
    }
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
