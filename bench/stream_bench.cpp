// Streams against plain memory: large blocks are to move at the speed of memcpy, values with one test each.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "io/streams/stream_memory.h"

namespace {

constexpr int blockSize = 16 * 1024 * 1024;

void PlainCopy(benchmark::State& state) {
    const std::vector<std::uint8_t> source(blockSize, 1);
    std::vector<std::uint8_t> target(blockSize);
    for (auto _ : state) {
        std::memcpy(target.data(), source.data(), blockSize);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * blockSize);
}
BENCHMARK(PlainCopy);

void StreamToStream(benchmark::State& state) {
    xIo::eMemoryStream source(blockSize);
    const std::vector<std::uint8_t> content(blockSize, 1);
    source.Write(content.data(), blockSize);
    xIo::eMemoryStream target(blockSize);
    for (auto _ : state) {
        source.Seek(0, xIo::fromStart);
        target.Seek(0, xIo::fromStart);
        target.WriteFrom(source, -1);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * blockSize);
}
BENCHMARK(StreamToStream);

// A stream that starts small and gets one block after another: growth included.
void GrowingBlocks(benchmark::State& state) {
    const std::vector<std::uint8_t> piece(64 * 1024, 1);
    for (auto _ : state) {
        xIo::eMemoryStream target(1024, 256);
        for (int done = 0; done < blockSize; done += static_cast<int>(piece.size())) {
            target.Write(piece.data(), static_cast<int>(piece.size()));
        }
        benchmark::DoNotOptimize(target.Content().data());
    }
    state.SetBytesProcessed(state.iterations() * blockSize);
}
BENCHMARK(GrowingBlocks);

// Vertices and indices: four bytes at a time into a stream of growStep 256.
void Values(benchmark::State& state) {
    for (auto _ : state) {
        xIo::eMemoryStream target(1024, 256);
        for (int done = 0; done < blockSize; done += 4) {
            target.WriteValue(done);
        }
        benchmark::DoNotOptimize(target.Content().data());
    }
    state.SetBytesProcessed(state.iterations() * blockSize);
}
BENCHMARK(Values);

}  // namespace

BENCHMARK_MAIN();
