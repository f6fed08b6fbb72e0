#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "mesh/mesh_check.h"
#include "mesh/mesh_proof.h"
#include "scene/node_name.h"
#include "standalone/loaders/load_scene.h"
#include "support/export_run.h"
#include "support/source_tree.h"

namespace {

using namespace mesh_test;
using testing::IsEmpty;

std::vector<std::filesystem::path> SceneFiles() {
    std::vector<std::filesystem::path> files;
    for (const char* folder : {"examples", "../shared/samples"}) {
        std::error_code missing;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(support::SourceTree() / folder, missing)) {
            const std::string name = entry.path().filename().string();
            if (name.ends_with(".glb") || name.ends_with(".gltf") || name.ends_with(".scene.json")) {
                files.push_back(entry.path());
            }
        }
    }
    std::ranges::sort(files);
    return files;
}

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
std::optional<eProof> Prove(const eFileMesh& mesh, support::eExportRun& run,
                            const standalone::eSceneData& scene) {
    std::vector<host::INode*> nodes;
    FindNodes(*run.host.GetRootNode(), mesh.name, nodes);
    std::optional<eProof> best;
    for (host::INode* node : nodes) {
        if (!FeedsItsMeshAlone(*node)) {
            return std::nullopt;
        }
        eProof proof = ProveMesh(mesh, *node, scene, 0);
        if (!best || proof.faults.size() < best->faults.size()) {
            best = std::move(proof);
        }
    }
    EXPECT_TRUE(best) << "no node has the mesh " << mesh.name;
    return best;
}

std::vector<std::string> MeshFiles(const support::eExportRun& run) {
    std::vector<std::string> files;
    std::error_code missing;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(run.folder.Path() + "/game", missing)) {
        if (entry.path().filename() == ".mesh") {
            std::ifstream file(entry.path(), std::ios::binary);
            files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    }
    return files;
}

class SampleProof : public testing::TestWithParam<std::filesystem::path> {};

// Catches any triangle that is lost, doubled, moved or turned round on the whole way from a scene file to the
// mesh file, and any skinned vertex that follows other bones or weights.
TEST_P(SampleProof, EveryTriangleIsInTheFileOnce) {
    const standalone::eLoadResult loaded =
        standalone::LoadScene(GetParam().string(), {.fps = {}, .asModel = "proof"});
    ASSERT_TRUE(loaded.scene);
    support::eExportRun run(*loaded.scene);
    run.SetOptions([](eExportOptions& options) { options.exportAnimation = 0; });
    run.Do();
    eProof sum;
    for (const std::string& file : MeshFiles(run)) {
        std::string problem;
        const auto content =
            ReadMeshFile({reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}, problem);
        ASSERT_TRUE(content) << problem;
        for (const eFileMesh& mesh : content->meshes) {
            EXPECT_THAT(CheckMesh(mesh), IsEmpty());
            if (const auto proof = Prove(mesh, run, *loaded.scene)) {
                EXPECT_THAT(proof->faults, IsEmpty());
                sum.exact += proof->exact;
                sum.welded += proof->welded;
                sum.lost += proof->lost;
                sum.skinnedCorners += proof->skinnedCorners;
            }
        }
    }
    RecordProperty("exact", static_cast<int>(sum.exact));
    RecordProperty("welded", static_cast<int>(sum.welded));
    RecordProperty("lost", static_cast<int>(sum.lost));
}

INSTANTIATE_TEST_SUITE_P(Scenes, SampleProof, testing::ValuesIn(SceneFiles()), [](const auto& scene) {
    std::string name = std::to_string(scene.index) + "_";
    for (const char c : scene.param.stem().string()) {
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    }
    return name;
});

}  // namespace
