// Reading a model text of 50 MB as an application does: at least 60 MB/s.
#include <benchmark/benchmark.h>

#include <string>

#include "io/sdl/sdl_reader.h"
#include "io/sdl/sdl_writer.h"
#include "io/streams/stream_memory.h"

namespace {

constexpr int textSize = 50 * 1000 * 1000;

// Bones with matrices, as the skeleton writer writes them.
std::string ModelText() {
    xIo::eMemoryStream stream(textSize + textSize / 8);
    xIo::xSdl::eWriter writer;
    writer.Attach(&stream);
    writer.Word(";Exported by:\t").Word("user").EndLine().BlockBegin().Word("skeleton").EndLine();
    constexpr int bytesPerBone = 190;
    for (int bone = 0; bone < textSize / bytesPerBone; ++bone) {
        const std::string name = "wheel \"" + std::to_string(bone) + "\"";
        writer.BlockBegin().Word("bone").Word("revolute").String(name.c_str()).EndLine();
        writer.BlockBegin().Word("matrix34");
        for (int value = 0; value < 12; ++value) {
            writer.Real(static_cast<float>(bone % 1000) * 0.37F - static_cast<float>(value));
        }
        writer.BlockEndLine().BlockBegin().Word("view").Integer(bone).Hexadecimal().Integer(-bone);
        writer.BlockEndLine().BlockEndLine();
    }
    writer.BlockEndLine();
    writer.Close();
    const auto content = stream.Content();
    return {content.begin(), content.end()};
}

void ReadModel(benchmark::State& state) {
    const std::string text = ModelText();
    for (auto _ : state) {
        xIo::xSdl::eReader reader;
        reader.OpenText("model", text);
        double sum = 0;
        while (reader.Next().type != xIo::xSdl::kTokenEnd) {
            reader.Unget();
            sum += static_cast<double>(reader.Next().real);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ReadModel)->Unit(benchmark::kMillisecond);

void SkipModel(benchmark::State& state) {
    const std::string text = ModelText();
    for (auto _ : state) {
        xIo::xSdl::eReader reader;
        reader.OpenText("model", text);
        reader.BlockBegin();
        reader.SkipBlock();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(SkipModel)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
