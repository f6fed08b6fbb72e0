#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "mesh/mesh_proof.h"
#include "mesh/mesh_run.h"
#include "standalone/loaders/load_scene.h"
#include "support/source_tree.h"

namespace {

using namespace mesh_test;
using testing::IsEmpty;

// A mesh of more than one node has no single object to be compared with.
bool FeedsItsMeshAlone(host::INode& node) {
    const host::Object* object = node.EvalWorldState(0).obj;
    return object != nullptr && object->CanConvertToType(host::kTriObjectClass) && !node.IsGroupHead() &&
           !host::HasUserPropString(node, "CommonMesh");
}

void FindNodes(host::INode& below, const std::string& meshName, std::vector<host::INode*>& found) {
    for (int i = 0; i < below.NumberOfChildren(); ++i) {
        host::INode& child = *below.GetChildNode(i);
        if (CleanNodeName(child.GetName(), true) == meshName) {
            found.push_back(&child);
        }
        FindNodes(child, meshName, found);
    }
}

// The proof against the node that fits best: models of one scene may have nodes of one name.
std::optional<eMeshProof> Prove(const eFileMesh& mesh, support::eExportRun& run,
                                const standalone::eSceneData& scene) {
    std::vector<host::INode*> nodes;
    FindNodes(*run.host.GetRootNode(), mesh.name, nodes);
    EXPECT_THAT(nodes, testing::Not(IsEmpty())) << "no node has the mesh " << mesh.name;
    std::optional<eMeshProof> best;
    for (host::INode* node : nodes) {
        if (!FeedsItsMeshAlone(*node)) {
            return std::nullopt;
        }
        eMeshProof proof(mesh, *node, scene);
        if (!best || proof.faults.size() < best->faults.size()) {
            best.emplace(std::move(proof));
        }
    }
    return best;
}

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
// file, and any mesh that is not written.
TEST_P(SampleProof, EveryTriangleIsInTheFileOnce) {
    standalone::eLoadResult loaded =
        standalone::LoadScene(GetParam().string(), {.fps = {}, .asModel = "proof"});
    ASSERT_TRUE(loaded.scene);
    loaded.scene->unitMetres = 1e5;  // so that the weld's millimetre is nothing
    support::eExportRun run(*loaded.scene);
    run.SetOptions([](eExportOptions& options) { options.exportAnimation = 0; });
    run.Do();
    std::size_t proved = 0;
    std::error_code missing;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(run.folder / "game", missing)) {
        if (entry.path().filename() != ".mesh") {
            continue;
        }
        const std::string file =
            run.folder.Read(std::filesystem::relative(entry.path(), run.folder.Path()).string());
        std::string problem;
        const auto content = ReadMeshFile(BytesOf(file), problem);
        ASSERT_TRUE(content) << problem;
        for (const eFileMesh& mesh : content->meshes) {
            EXPECT_THAT(CheckMesh(mesh), IsEmpty());
            if (const auto proof = Prove(mesh, run, *loaded.scene)) {
                EXPECT_THAT(proof->faults, IsEmpty());
                proved += proof->sceneTriangles;
            }
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
