#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "support/index_meshes.h"
#include "support/scene_builder.h"
#include "volume/convexity.h"
#include "volume/fitted_box.h"
#include "volume/polyhedron_image.h"

namespace {

using host::Mesh;
using host::Point2;
using host::Point3;

// A closed solid around the origin; one of its vertices is moved towards it by that share.
Mesh Ball(std::size_t triangles, float dent) {
    const std::size_t side = SquareSide(triangles);
    Mesh mesh;
    mesh.verts = {{0, 0, 1}, {0, 0, -1}};
    for (std::size_t ring = 1; ring < side; ++ring) {
        for (std::size_t step = 0; step < side; ++step) {
            const float polar = 3.14159265F * static_cast<float>(ring) / static_cast<float>(side);
            const float around = 6.2831853F * static_cast<float>(step) / static_cast<float>(side);
            mesh.verts.push_back(
                {std::sin(polar) * std::cos(around), std::sin(polar) * std::sin(around), std::cos(polar)});
        }
    }
    mesh.verts[mesh.verts.size() / 2] = mesh.verts[mesh.verts.size() / 2] * (1 - dent);
    const eIndexMesh corners = Sphere(triangles);
    for (std::size_t i = 0; i < corners.size(); i += 3) {
        mesh.faces.push_back({{corners[i], corners[i + 2], corners[i + 1]}, 1, 0});
    }
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
            Mesh mesh = Ball(560, dent);
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
        Mesh mesh = Ball(160, 0);
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
