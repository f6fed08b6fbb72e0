#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "support/index_meshes.h"
#include "volume/convexity.h"
#include "volume/fitted_box.h"
#include "volume/polyhedron_image.h"

namespace {

using host::Mesh;
using host::Point2;
using host::Point3;

Mesh MakeMesh(std::vector<Point3> verts, const std::vector<std::array<std::uint32_t, 3>>& faces) {
    Mesh mesh;
    mesh.verts = std::move(verts);
    for (const auto& corners : faces) {
        host::Face face;
        std::copy(corners.begin(), corners.end(), face.v);
        mesh.faces.push_back(face);
    }
    return mesh;
}

Mesh Sphere(int rings, int sides, float dent) {
    std::vector<Point3> verts{{0, 0, 1}};
    for (int r = 1; r < rings; ++r) {
        for (int s = 0; s < sides; ++s) {
            const float polar = 3.14159265F * static_cast<float>(r) / static_cast<float>(rings);
            const float around = 6.2831853F * static_cast<float>(s) / static_cast<float>(sides);
            verts.push_back(
                {std::sin(polar) * std::cos(around), std::sin(polar) * std::sin(around), std::cos(polar)});
        }
    }
    verts.push_back({0, 0, -1});
    verts[verts.size() / 2] = verts[verts.size() / 2] * (1 - dent);
    std::vector<std::array<std::uint32_t, 3>> faces;
    const auto at = [&](int r, int s) { return static_cast<std::uint32_t>(1 + (r - 1) * sides + s % sides); };
    const auto bottom = static_cast<std::uint32_t>(verts.size() - 1);
    for (int s = 0; s < sides; ++s) {
        faces.push_back({0, at(1, s), at(1, s + 1)});
        faces.push_back({bottom, at(rings - 1, s + 1), at(rings - 1, s)});
        for (int r = 1; r + 1 < rings; ++r) {
            faces.push_back({at(r, s), at(r + 1, s), at(r + 1, s + 1)});
            faces.push_back({at(r, s), at(r + 1, s + 1), at(r, s + 1)});
        }
    }
    return MakeMesh(std::move(verts), faces);
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
            Mesh mesh = Sphere(14, 20, dent);
            for (Point3& p : mesh.verts) {
                p = p * scale;
            }
            EXPECT_EQ(IsConvex(mesh), IsConvexPlain(mesh)) << "scale " << scale << " dent " << dent;
            convex += IsConvexPlain(mesh) ? 1 : 0;
        }
    }
    EXPECT_GT(convex, 0);
    std::mt19937 random(1);
    std::uniform_real_distribution<float> noise(-0.02F, 0.02F);
    for (int round = 0; round < 20; ++round) {
        Mesh mesh = Sphere(8, 10, 0);
        for (Point3& p : mesh.verts) {
            p += Point3{noise(random), noise(random), noise(random)};
        }
        EXPECT_EQ(IsConvex(mesh), IsConvexPlain(mesh)) << round;
    }
}

// A vertex just above or below the tolerance of 0.01: a coarse look beforehand must not lose the one above.
TEST(Convexity, DecidesCloseToTheTolerance) {
    for (const float slope : {0.0095F, 0.0099F, 0.0102F, 0.0105F, 0.012F}) {
        const Mesh mesh = MakeMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {10, 0, 10 * slope}}, {{0, 1, 2}});
        EXPECT_EQ(IsConvex(mesh), slope < 0.01F) << slope;
    }
}

TEST(Convexity, TakesATetrahedronAndRefusesADent) {
    const Mesh tetrahedron =
        MakeMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}});
    EXPECT_TRUE(IsConvex(tetrahedron));
    EXPECT_FALSE(IsConvex(Sphere(8, 12, 0.4F)));
    EXPECT_TRUE(IsConvex(Mesh()));
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
    const eFittedBox beside = FitBox(std::vector<Point2>{{-2, 0.5F}, {2, 0.5F}, {2, 1.5F}, {-2, 1.5F}});
    EXPECT_FLOAT_EQ(beside.center.y, 1);
    EXPECT_FLOAT_EQ(beside.extent.x, 2);
    EXPECT_FLOAT_EQ(beside.extent.y, 0.5F);
}

TEST(PolyhedronImage, HasTheToldLayoutAndReadsBack) {
    EXPECT_EQ(MakePolyhedronImage(Mesh(), {}, 1).size(), 28U);
    Mesh mesh = MakeMesh({{0, 0, 0}, {1, 0, 0}, {0, 2, 0}}, {{0, 1, 2}});
    mesh.faces[0].setMatID(1);
    const auto image = MakePolyhedronImage(mesh, host::TransMatrix({0, 0, 1}), 0.5F);
    ASSERT_EQ(image.size(), 28U + 36U + 6U + 1U);
    EXPECT_EQ(image.back(), 2) << "material index plus 1";
    const std::string text = HexText(image);
    EXPECT_EQ(text.substr(0, 32), "45564c4d564552540300000000000000");
    std::string problem;
    const auto read = ReadPolyhedron(text, problem);
    ASSERT_TRUE(read) << problem;
    EXPECT_EQ(read->vertices[2], (Point3{0, 1, 0.5F}));
    EXPECT_EQ(read->indices, (std::vector<std::uint16_t>{2, 1, 0}));
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(ReadPolyhedron(text.substr(0, length), problem)) << length;
    }
    EXPECT_FALSE(ReadPolyhedron(text + "00", problem));
}

}  // namespace
