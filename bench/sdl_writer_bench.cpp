// How fast text files are built: mixed tokens as in a skeleton, into memory. The counter is bytes of text.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "io/sdl/sdl_writer.h"

namespace {

using xIo::xSdl::eWriter;

void WriteBone(eWriter& writer, int number) {
    const float phase = static_cast<float>(number % 1009) / 1009.0f;
    writer.BlockBegin().Word("bone").String("wheel_front_left").EndLine();
    writer.BlockBegin().Word("parent").Integer(number % 255).BlockEnd();
    writer.BlockBegin().Word("flags").Hexadecimal().Integer(number).BlockEndLine();
    writer.BlockBegin().Word("matrix").EndLine();
    for (int row = 0; row < 4; ++row) {
        writer.BlockBegin();
        writer.Real(phase * static_cast<float>(row)).Real(-phase).Real(1.0f - phase).BlockEndLine();
    }
    writer.BlockEndLine();
    writer.BlockBegin().Word("view").DropIfEmpty().BlockEndLine();
    writer.BlockEndLine();
}

void MixedTokens(benchmark::State& state) {
    std::int64_t bytes = 0;
    for (auto _ : state) {
        xIo::eMemoryStream target;
        eWriter writer;
        writer.Attach(&target);
        writer.BlockBegin().Word("skeleton").EndLine();
        for (int bone = 0; bone < state.range(0); ++bone) {
            WriteBone(writer, bone);
        }
        writer.BlockEndLine().Close();
        bytes += target.Size();
    }
    state.SetBytesProcessed(bytes);
}
// 250 bytes a bone: up to 50 MB of text. The rate must not fall as the text grows.
BENCHMARK(MixedTokens)->Arg(1000)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);

void Reals(benchmark::State& state) {
    std::int64_t bytes = 0;
    for (auto _ : state) {
        xIo::eMemoryStream target;
        eWriter writer;
        writer.Attach(&target);
        float value = -977.0f;
        for (int index = 0; index < 100000; ++index, value += 0.0123f) {
            writer.Real(value);
        }
        writer.Close();
        bytes += target.Size();
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(Reals)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
