// Reading and writing of scene documents; cost must grow in proportion to the nodes.
#include <benchmark/benchmark.h>

#include "large_scene.h"
#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "standalone/loaders/scene_document/scene_document_writer.h"

namespace {

void ReadDocument(benchmark::State& state) {
    const std::string text = bench::LargeSceneDocument(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const standalone::eLoadResult result = standalone::ReadSceneDocument(text, "/bench/large.scene.json");
        if (!result.scene) {
            state.SkipWithError("the document was refused");
            break;
        }
        benchmark::DoNotOptimize(result.scene->nodes.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ReadDocument)->Arg(12500)->Arg(25000)->Arg(50000)->Unit(benchmark::kMillisecond);

void WriteDocument(benchmark::State& state) {
    const standalone::eSceneData scene = bench::LargeScene(static_cast<int>(state.range(0)));
    std::size_t size = 0;
    for (auto _ : state) {
        size = standalone::WriteSceneDocument(scene, "").text.size();
        benchmark::DoNotOptimize(size);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}
BENCHMARK(WriteDocument)->Arg(12500)->Arg(25000)->Arg(50000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
