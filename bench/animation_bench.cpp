// What one animation costs from the host's records to the closed .anm and the text report, with every bone
// moving in every frame. The cost of a bone in a frame must not grow with their number, nor with the depth of
// the tree; the memory counters are bytes for each bone and frame.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "animation/export_frame.h"
#include "run/export.h"
#include "standalone/standalone_host.h"
#include "support/scene_builder.h"
#include "support/temp_folder.h"

namespace {

constexpr int kFrames = 10000;

// Chains of that depth below one root; keys every ten frames, and another pose in each.
standalone::eSceneData MovingChains(int bones, int depth) {
    support::eSceneBuilder scene;
    scene.Settings().lastFrame = kFrames - 1;
    const auto move = [](support::eNode& node, int number) {
        for (int key = 0; key <= kFrames; key += 10) {
            const auto along = static_cast<float>(key % 370 + number);
            node.Key({.frame = static_cast<double>(key),
                      .position = host::Point3{1, 0.01F * along, 0.003F * static_cast<float>(key % 1010)},
                      .rotation = support::RotationAbout({1, along, 100}, 3 * along)});
        }
        node.Object(standalone::eHelperObject{});
    };
    support::eNode root = scene.Node("root").Property("Model=bench/run");
    root.Property("animation=run,all,0-" + std::to_string(kFrames - 1));
    move(root, 0);
    std::vector<support::eNode> all{root};
    for (int made = 1; made < bones; ++made) {
        support::eNode above = (made - 1) % (depth - 1) == 0 ? root : all.back();
        all.push_back(above.Child("bone" + std::to_string(made)));
        move(all.back(), made);
    }
    scene.SelectionSet("all", all);
    return scene.Build();
}

// The most memory that the process has held since the last call, as far as the system tells it. What an
// earlier row has left behind hides some of it: filter for one row.
double PeakBytes() {
    std::ifstream status("/proc/self/status");
    double peak = 0;
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            status >> peak;
        }
    }
    std::ofstream("/proc/self/clear_refs") << "5";
    return 1024 * peak;
}

double FileBytes(const std::string& path) {
    return static_cast<double>(std::filesystem::file_size(path));
}

void SampledAndWritten(benchmark::State& state) {
    const int bones = static_cast<int>(state.range(0)), depth = static_cast<int>(state.range(1));
    const double bonesTimesFrames = static_cast<double>(bones) * kFrames;
    const support::eTempFolder folder;
    standalone::StandaloneHost host(MovingChains(bones, depth));
    host.SetConfigFolder(folder.Path());
    double reportBytes = 0;
    PeakBytes();
    const double before = PeakBytes();
    for (auto _ : state) {
        Export exporter;
        exporter.optionsDialog = [&folder](Export& run) {
            run.options.resourceRoot = folder.Path();
            return true;
        };
        exporter.DoExport("", nullptr, &host, false, 0);
        reportBytes = FileBytes(folder / "bench/run/anim.txt");
        if (FileBytes(folder / "bench/run/run.anm") < 20 * bonesTimesFrames) {
            state.SkipWithError("a bone stands still");
        }
    }
    state.counters["frame_table"] = sizeof(eExportFrameBone);
    state.counters["report"] = reportBytes / bonesTimesFrames;
    state.counters["peak_with_host"] = (PeakBytes() - before) / bonesTimesFrames;
    state.counters["per_bone_frame"] = benchmark::Counter(
        bonesTimesFrames, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(SampledAndWritten)
    ->ArgNames({"bones", "depth"})
    ->Args({50, 5})
    ->Args({100, 5})
    ->Args({200, 5})
    ->Args({100, 100})
    ->Args({200, 100})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
