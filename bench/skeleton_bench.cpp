// How long a scene of many nodes takes from the host's records to the closed .mdl: 10 levels, 20 properties
// at each node. The cost of a node must not grow with their number, however wide or deep the tree is.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "run/export.h"
#include "standalone/standalone_host.h"

namespace {

constexpr int kLevels = 10;

standalone::eNodeData MakeNode(int number, int parent) {
    standalone::eNodeData node;
    node.name = "Bone_" + std::to_string(number);
    node.object = number;
    node.parent = parent;
    node.transform.parts.position = {1, static_cast<float>(number % 7), 0.5F};
    node.properties = number == 0 ? "Model=bench/tree" : "IKType=revolute\r\nIKMin=-1,5\r\nIKMax=2";
    for (int property = 3; property < 20; ++property) {
        node.properties +=
            "\r\nproperty_" + std::to_string(property) + "=" + std::to_string(number + property);
    }
    return node;
}

// Every second node is a helper, the others show an object each.
standalone::eObjectData MakeObject(int number) {
    standalone::eObjectData object;
    if (number % 2 == 0) {
        object.kind = standalone::eHelperObject{};
    } else {
        object.kind = standalone::eLineObject{};
    }
    return object;
}

// Chains below one root, as deep as the tree may be: thousands of siblings.
standalone::eSceneData WideScene(int nodeCount) {
    standalone::eSceneData scene;
    scene.roots = {0};
    for (int number = 0; number < nodeCount; ++number) {
        const bool startsChain = (number - 1) % (kLevels - 1) == 0;
        scene.nodes.push_back(MakeNode(number, number == 0 ? -1 : startsChain ? 0 : number - 1));
        scene.objects.push_back(MakeObject(number));
        if (number > 0) {
            scene.nodes[static_cast<std::size_t>(scene.nodes.back().parent)].children.push_back(number);
        }
    }
    return scene;
}

void SceneToModelText(benchmark::State& state) {
    const auto nodeCount = static_cast<int>(state.range(0));
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "zyr_skeleton_bench";
    std::filesystem::create_directories(folder);
    standalone::StandaloneHost host(WideScene(nodeCount));
    host.SetConfigFolder(folder);
    for (auto _ : state) {
        Export exporter;
        exporter.optionsDialog = [&folder](Export& run) {
            run.options.resourceRoot = folder.string();
            return true;
        };
        exporter.DoExport("", nullptr, &host, false, 0);
        if (exporter.modelReports.at(0).bones != nodeCount) {
            state.SkipWithError("a bone is missing");
        }
    }
    std::filesystem::remove_all(folder);
    state.SetItemsProcessed(state.iterations() * nodeCount);
    state.counters["per_node"] =
        benchmark::Counter(static_cast<double>(nodeCount),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(SceneToModelText)->Arg(12500)->Arg(25000)->Arg(50000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
