// The strip generator beside a general-purpose vertex cache optimiser, on the same meshes in the same run:
// time per triangle, and what the result costs a first-in-first-out cache of 24 (ACMR and ATVR).
#include <benchmark/benchmark.h>
#include <meshoptimizer.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "index_meshes.h"
#include "mesh/strips/cache_statistics.h"
#include "mesh/strips/strip_generator.h"
#include "mesh/strips/strip_messages.h"
#include "standalone/loaders/load_scene.h"
#include "support/source_tree.h"

namespace {

constexpr std::size_t cacheSize = 24;

// Reorders a triangle list for the vertex cache.
using eReorder = std::function<eIndexMesh(const eIndexMesh&)>;

eIndexMesh ByStrips(const eIndexMesh& mesh) {
    std::unique_ptr<ePrimitiveGroup[]> groups;
    std::uint16_t numGroups = 0;
    if (!GenerateStrips(mesh.data(), static_cast<unsigned>(mesh.size()), groups, numGroups, true)) {
        return {};
    }
    return {groups[0].indices.get(), groups[0].indices.get() + groups[0].numIndices};
}

std::size_t VertexCount(const eIndexMesh& mesh) {
    return *std::max_element(mesh.begin(), mesh.end()) + std::size_t{1};
}

eIndexMesh ByMeshoptimizer(const eIndexMesh& mesh) {
    eIndexMesh result(mesh.size());
    meshopt_optimizeVertexCache(result.data(), mesh.data(), mesh.size(), VertexCount(mesh));
    return result;
}

eIndexMesh ByMeshoptimizerFifo(const eIndexMesh& mesh) {
    eIndexMesh result(mesh.size());
    meshopt_optimizeVertexCacheFifo(result.data(), mesh.data(), mesh.size(), VertexCount(mesh), cacheSize);
    return result;
}

void Measure(benchmark::State& state, const eIndexMesh& mesh, const eReorder& reorder) {
    eIndexMesh result;
    for (auto _ : state) {
        result = reorder(mesh);
        benchmark::DoNotOptimize(result.data());
    }
    using benchmark::Counter;
    state.counters["us_per_triangle"] = Counter(static_cast<double>(mesh.size() / 3) * 1e-6,
                                                Counter::kIsIterationInvariantRate | Counter::kInvert);
    const eCacheStatistics before = SimulateVertexCache(mesh, cacheSize);
    const eCacheStatistics after = SimulateVertexCache(result, cacheSize);
    state.counters["ACMR_before"] = before.MissesPerTriangle();
    state.counters["ACMR"] = after.MissesPerTriangle();
    state.counters["ATVR"] = after.MissesPerVertex();
}

void Register(const std::string& name, const eIndexMesh& mesh) {
    const auto add = [&](const std::string& method, const eReorder& reorder) {
        benchmark::RegisterBenchmark(
            (name + "/" + std::to_string(mesh.size() / 3) + "/" + method).c_str(),
            [mesh, reorder](benchmark::State& state) { Measure(state, mesh, reorder); })
            ->Unit(benchmark::kMillisecond);
    };
    add("strips", ByStrips);
    add("meshopt", ByMeshoptimizer);
    add("meshopt_fifo", ByMeshoptimizerFifo);
}

// The largest mesh of a file, by its own vertex numbers; empty where the file is missing.
eIndexMesh LargestMesh(const std::string& file) {
    eIndexMesh largest;
    const standalone::eLoadResult loaded = standalone::LoadScene(file);
    for (const standalone::eObjectData& object :
         loaded.scene ? loaded.scene->objects : std::vector<standalone::eObjectData>{}) {
        const auto* mesh = std::get_if<standalone::eMeshObject>(&object.kind);
        if (mesh == nullptr || 3 * mesh->mesh.faces.size() <= largest.size()) {
            continue;
        }
        largest.clear();
        for (const host::Face& face : mesh->mesh.faces) {
            AddTriangle(largest, face.v[0], face.v[1], face.v[2]);
        }
    }
    return largest;
}

void RegisterModels() {
    for (const std::string name : {"BoomBoxWithAxes/glTF/BoomBoxWithAxes.gltf",
                                   "CesiumMan/glTF-Binary/CesiumMan.glb", "Duck/glTF-Binary/Duck.glb"}) {
        const auto file = support::SourceTree() / "../shared/samples/gltf" / name;
        if (const eIndexMesh mesh = LargestMesh(file.string()); !mesh.empty()) {
            Register(file.stem().string(), mesh);
        }
    }
}

void RegisterAll() {
    RegisterModels();
    for (const std::size_t triangles : {1000u, 5000u, 20000u, 60000u}) {
        Register("grid", Grid(triangles));
        Register("torus", Torus(triangles));
        Register("sphere", Sphere(triangles));
        Register("shuffled_grid", Shuffled(Grid(triangles), 1));
        Register("fan", Fan(triangles));
        Register("bipyramid", Bipyramid(triangles));
        // Up to 21845 triangles with vertices of their own, from then on with shared vertices but no shared
        // edge.
        Register("soup", SeparateTriangles(triangles));
        Register("random_soup", RandomTriangles(triangles, 65535, 2));
    }
    // The vertices of the index range suffice for so many.
    Register("pinwheel", Pinwheel(32000));
    Register("dense_soup", RandomTriangles(60000, 1000, 3));
}

}  // namespace

int main(int argc, char** argv) {
    // Random triangles put many on one edge; their lines would mix with the table.
    stripMessageSink = [](const char*) {};
    benchmark::Initialize(&argc, argv);
    RegisterAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
