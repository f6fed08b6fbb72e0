// What the checks of large volumes and zones cost: the convexity of a polyhedron, whose plain test compares
// every face with every vertex, and the box around the vertices of a zone.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "ball_mesh.h"
#include "volume/convexity.h"
#include "volume/fitted_box.h"

namespace {

// In a solid that is convex no face ends the test early.
void ConvexityOfASphere(benchmark::State& state) {
    const host::Mesh mesh = BallMesh(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        if (!IsConvex(mesh)) {
            state.SkipWithError("the sphere is convex");
        }
    }
    state.counters["faces"] = static_cast<double>(mesh.faces.size());
}
BENCHMARK(ConvexityOfASphere)->Arg(5000)->Arg(20000)->Arg(40000)->Unit(benchmark::kMillisecond);

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
