#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "standalone/loaders/load_scene.h"
#include "support/source_tree.h"
#include "verify/verify_run.h"

namespace {

using namespace verify_test;
using testing::IsEmpty;

nlohmann::json GltfJson(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(file), {}};
    const bool isBinary = content.starts_with("glTF");
    return nlohmann::json::parse(isBinary ? content.substr(20, content.find(std::string("BIN\0", 4)) - 24)
                                          : content);
}

// The triangles of all meshes that nodes of a glTF file show, each mesh once, by its JSON alone.
std::size_t TrianglesOf(const nlohmann::json& file) {
    std::set<std::size_t> shown;
    for (const auto& node : file["nodes"]) {
        if (node.contains("mesh")) {
            shown.insert(node["mesh"].get<std::size_t>());
        }
    }
    std::size_t triangles = 0;
    for (const std::size_t mesh : shown) {
        for (const auto& primitive : file["meshes"][mesh]["primitives"]) {
            const int mode = primitive.value("mode", 4);
            const auto& numbers =
                primitive.contains("indices") ? primitive["indices"] : primitive["attributes"]["POSITION"];
            const std::size_t count = file["accessors"][numbers.get<std::size_t>()]["count"];
            triangles += mode == 4 ? count / 3 : mode > 4 && count > 2 ? count - 2 : 0;
        }
    }
    return triangles;
}

// The triangles without area that the loader tells to have left out: "...: NAME (24), NAME (3)".
std::size_t FlatTriangles(const standalone::eLoadResult& loaded) {
    std::size_t triangles = 0;
    for (const std::string& warning : loaded.warnings) {
        const bool isTold = warning.starts_with("triangles without area are left out: ");
        for (std::size_t at = warning.find('('); isTold && at != std::string::npos;
             at = warning.find('(', at + 1)) {
            triangles += std::stoul(warning.substr(at + 1));
        }
    }
    return triangles;
}

class SampleProof : public testing::TestWithParam<std::filesystem::path> {};

// Catches any triangle that is lost, doubled, moved or turned round on the whole way from a file to the mesh
// file, any mesh that is not written, and any pose that is played otherwise than the scene moves.
TEST_P(SampleProof, WhatIsWrittenIsTheScene) {
    const standalone::eLoadResult loaded =
        standalone::LoadScene(GetParam().string(), {.fps = {}, .asModel = "proof"});
    ASSERT_TRUE(loaded.scene);
    eVerifyRun run(*loaded.scene);
    run.Do();
    EXPECT_THAT(run.Findings(), IsEmpty());
}

// The same with a millimetre, within which vertices are joined, so small that it is nothing.
TEST_P(SampleProof, EveryTriangleIsInTheFileOnce) {
    standalone::eLoadResult loaded =
        standalone::LoadScene(GetParam().string(), {.fps = {}, .asModel = "proof"});
    ASSERT_TRUE(loaded.scene);
    loaded.scene->unitMetres = 1e5;
    eVerifyRun run(*loaded.scene);
    run.SetOptions([](eExportOptions& options) { options.exportAnimation = 0; });
    run.Do();
    const verify::eTolerances tolerances{.metres = 1};  // single precision far from the origin
    EXPECT_THAT(run.Findings(tolerances), IsEmpty());
    std::size_t proved = 0;
    for (const verify::eModelVerdict& model : run.Verify(tolerances).models) {
        for (const verify::eMeshVerdict& mesh : model.meshes) {
            proved += static_cast<std::size_t>(mesh.found + mesh.repeated);
        }
    }
    // Scenes with properties leave some meshes out, or merge them.
    if (GetParam().string().find("/samples/gltf/") != std::string::npos) {
        EXPECT_EQ(proved + FlatTriangles(loaded), TrianglesOf(GltfJson(GetParam())));
    }
}

INSTANTIATE_TEST_SUITE_P(Scenes, SampleProof, testing::ValuesIn(support::SceneFiles()),
                         [](const auto& scene) {
                             std::string name = std::to_string(scene.index) + "_";
                             for (const char c : scene.param.stem().string()) {
                                 name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
                             }
                             return name;
                         });

}  // namespace
