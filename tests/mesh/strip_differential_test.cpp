// The fast strip generator against the plain one: the same triangles in the same order and the same lines, on
// many meshes. Would catch: any short cut that is not exact.
#include <gtest/gtest.h>

#include "mesh/plain_strip_generator.h"
#include "mesh/strip_runner.h"
#include "support/index_meshes.h"

namespace {

void ExpectSameAsPlain(const eIndexMesh& mesh, int cacheSize) {
    const eStripRun fast = RunStrips(mesh, cacheSize);
    plain::eStripGenerator plain;
    const std::vector<std::uint16_t> slow = plain.Run(mesh, cacheSize);
    EXPECT_EQ(fast.succeeded, !slow.empty());
    EXPECT_EQ(fast.messages, plain.messages);
    EXPECT_TRUE(fast.indices == slow)
        << "first different index: " << std::ranges::mismatch(fast.indices, slow).in1 - fast.indices.begin()
        << " of " << slow.size();
}

// Some triangles again, a third of them from another corner on; some corners moved elsewhere.
eIndexMesh Damaged(eIndexMesh mesh, std::mt19937& random) {
    const std::size_t count = mesh.size() / 3;
    for (std::size_t i = 0; i < count / 4; ++i) {
        const std::size_t from = random() % count;
        const std::size_t turn = random() % 3 == 0 ? 1 : 0;
        AddTriangle(mesh, mesh[3 * from + turn], mesh[3 * from + 1 + turn], mesh[3 * from + (2 + turn) % 3]);
    }
    for (std::uint16_t& v : mesh) {
        if (random() % 20 == 0) {
            v = static_cast<std::uint16_t>(random() % 50);
        }
    }
    return mesh;
}

eIndexMesh AnyMesh(std::mt19937& random) {
    const std::size_t size = 1 + random() % 80;
    switch (random() % 9) {
        case 0:
            return Grid(size);
        case 1:
            return Torus(size);
        case 2:
            return Sphere(size);
        case 3:
            return Fan(size);
        case 4:
            return Bipyramid(size);
        case 5:
            return SeparateTriangles(size);
        case 6:
            return Pinwheel(size);
        default:
            return RandomTriangles(size, 4 + random() % 50, static_cast<unsigned>(random()));
    }
}

TEST(StripDifferential, SmallMeshesOfManyKinds) {
    std::mt19937 random(20100401);
    for (int i = 0; i < 800 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        eIndexMesh mesh = AnyMesh(random);
        if (random() % 2 == 0) {
            mesh = Damaged(std::move(mesh), random);
        }
        if (random() % 2 == 0) {
            mesh = Shuffled(std::move(mesh), static_cast<unsigned>(random()));
        }
        // Sizes that leave one vertex, two, and about three pieces' worth, and the usual one.
        ExpectSameAsPlain(mesh, random() % 2 == 0 ? 24 : static_cast<int>(random() % 40) - 3);
    }
}

// Would catch also: seeds that repeat or run out otherwise than told, which takes many passes to show.
TEST(StripDifferential, LargerMeshes) {
    for (const eIndexMesh& mesh :
         {Grid(3000), Torus(3000), Sphere(3000), Shuffled(Grid(3000), 11), Shuffled(Sphere(3000), 12),
          Shuffled(Fan(1200), 13), SeparateTriangles(1500), RandomTriangles(2000, 300, 14)}) {
        ExpectSameAsPlain(mesh, 24);
    }
}

// Two hubs, 0 and 1, with very many triangles each, some with both, and triangles without them, all on the
// same `others` vertices.
eIndexMesh TwoHubs(std::size_t triangles, std::size_t others, unsigned seed) {
    std::mt19937 random(seed);
    const auto other = [&] { return 2 + random() % others; };
    eIndexMesh mesh;
    for (std::size_t i = 0; i < triangles; ++i) {
        switch (random() % 8) {
            case 0:
                AddTriangle(mesh, other(), other(), other());
                break;
            case 1:
                AddTriangle(mesh, 0, other(), 1);
                break;
            default:
                AddTriangle(mesh, random() % 2, other(), other());
        }
    }
    return mesh;
}

// Vertices with 512 and more pieces take a way of their own through the ordering.
TEST(StripDifferential, VerticesWithManyPieces) {
    ExpectSameAsPlain(Pinwheel(600), 24);
    ExpectSameAsPlain(TwoHubs(1800, 3000, 22), 8);
    ExpectSameAsPlain(TwoHubs(1800, 2000, 23), 24);
}

}  // namespace
