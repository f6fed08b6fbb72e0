#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

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

// The triangles of all meshes that nodes show, each once however many show it.
std::size_t TrianglesOf(const standalone::eSceneData& scene) {
    std::size_t count = 0;
    for (const standalone::eObjectData& object : scene.objects) {
        const auto* mesh = std::get_if<standalone::eMeshObject>(&object.kind);
        count += mesh != nullptr ? mesh->mesh.faces.size() : 0;
    }
    return count;
}

class SampleProof : public testing::TestWithParam<std::filesystem::path> {};

// Catches any triangle that is lost, doubled, moved or turned round on the whole way from a scene to the mesh
// file, any mesh that is not written, and any skinned vertex that follows other bones or weights.
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
        EXPECT_EQ(proved, TrianglesOf(*loaded.scene));
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
