// What the checks of large volumes and zones cost: the convexity of a polyhedron, whose plain test compares
// every face with every vertex, and the box around the vertices of a zone.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "support/index_meshes.h"
#include "volume/convexity.h"
#include "volume/fitted_box.h"

namespace {

// A solid around the origin with about that many faces; the radius of a vertex is that of `radius(number)`.
template <class Radius>
host::Mesh Solid(std::size_t faces, Radius&& radius) {
    const auto side = SquareSide(faces);
    host::Mesh mesh;
    mesh.verts = {{0, 0, radius(0)}, {0, 0, -radius(1)}};
    for (std::size_t ring = 1; ring < side; ++ring) {
        for (std::size_t step = 0; step < side; ++step) {
            const float polar =
                std::numbers::pi_v<float> * static_cast<float>(ring) / static_cast<float>(side);
            const float around =
                2 * std::numbers::pi_v<float> * static_cast<float>(step) / static_cast<float>(side);
            const host::Point3 direction{std::sin(polar) * std::cos(around),
                                         std::sin(polar) * std::sin(around), std::cos(polar)};
            mesh.verts.push_back(direction * radius(mesh.verts.size()));
        }
    }
    const eIndexMesh corners = Sphere(faces);
    for (std::size_t face = 0; face + 2 < corners.size(); face += 3) {
        // The list runs the other way round than a solid's faces.
        mesh.faces.push_back({{corners[face], corners[face + 2], corners[face + 1]}, 1, 0});
    }
    return mesh;
}

// All faces stand in the way of an early end only in a solid that is convex.
void ConvexityOfASphere(benchmark::State& state) {
    const host::Mesh mesh = Solid(static_cast<std::size_t>(state.range(0)), [](std::size_t) { return 1.0F; });
    for (auto _ : state) {
        if (!IsConvex(mesh)) {
            state.SkipWithError("the sphere is convex");
        }
    }
    state.counters["faces"] = static_cast<double>(mesh.faces.size());
}
BENCHMARK(ConvexityOfASphere)->Arg(5000)->Arg(20000)->Arg(40000)->Unit(benchmark::kMillisecond);

// Bumps just below the tolerance: every face has vertices that need the exact test.
void ConvexityNearTheTolerance(benchmark::State& state) {
    const host::Mesh mesh = Solid(static_cast<std::size_t>(state.range(0)),
                                  [](std::size_t vertex) { return vertex % 2 == 0 ? 1.0F : 0.99995F; });
    for (auto _ : state) {
        benchmark::DoNotOptimize(IsConvex(mesh));
    }
    state.counters["convex"] = IsConvex(mesh) ? 1 : 0;
}
BENCHMARK(ConvexityNearTheTolerance)->Arg(20000)->Unit(benchmark::kMillisecond);

void FittedBox(benchmark::State& state) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> coordinate(-100, 100);
    std::vector<host::Point2> points(static_cast<std::size_t>(state.range(0)));
    for (host::Point2& point : points) {
        point = {coordinate(random), 0.3F * coordinate(random)};
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(FitBox(points));
    }
}
BENCHMARK(FittedBox)->Arg(50000)->Arg(200000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
