#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "support/gltf_scene.h"
#include "support/source_tree.h"

namespace {

using namespace standalone;
using namespace support;
using nlohmann::json;

std::vector<std::filesystem::path> Samples() {
    std::vector<std::filesystem::path> files;
    const std::filesystem::path folder = SourceTree() / "../shared/samples";
    if (!std::filesystem::exists(folder)) {
        return files;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".glb" || entry.path().extension() == ".gltf") {
            files.push_back(entry.path());
        }
    }
    std::ranges::sort(files);
    return files;
}

std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

json JsonOf(const std::string& content) {
    if (content.starts_with("glTF")) {
        return json::parse(content.substr(20, content.find(std::string("BIN\0", 4)) - 24));
    }
    return json::parse(content);
}

// Triangles that the nodes of the file show, counted from its JSON alone.
std::size_t TrianglesShown(const json& file) {
    const auto trianglesOf = [&](const json& primitive) -> std::size_t {
        const int mode = primitive.value("mode", 4);
        const auto accessor =
            primitive.contains("indices") ? primitive["indices"] : primitive["attributes"]["POSITION"];
        const std::size_t count = file["accessors"][accessor.get<std::size_t>()]["count"];
        return mode == 4 ? count / 3 : mode > 4 && count > 2 ? count - 2 : 0;
    };
    std::size_t shown = 0;
    for (const json& node : file["nodes"]) {
        if (node.contains("mesh")) {
            for (const json& primitive : file["meshes"][node["mesh"].get<std::size_t>()]["primitives"]) {
                shown += trianglesOf(primitive);
            }
        }
    }
    return shown;
}

std::size_t TrianglesShown(const eSceneData& scene) {
    std::size_t shown = 0;
    for (const eNodeData& node : scene.nodes) {
        if (const auto* mesh =
                std::get_if<eMeshObject>(&scene.objects[static_cast<std::size_t>(node.object)].kind)) {
            shown += mesh->mesh.faces.size();
        }
    }
    return shown;
}

// Would catch real models that are refused, lose triangles, or refer to what is not there.
TEST(GltfSamples, EveryModelKeepsItsTriangles) {
    for (const std::filesystem::path& path : Samples()) {
        const std::string content = ContentOf(path);
        for (const char* asModel : {"", "test/sample"}) {
            const eLoadResult result = ImportGltf(path.string(), content, {.fps = {}, .asModel = asModel});
            ASSERT_EQ(ProblemsOf(result), "") << path;
            EXPECT_EQ(TrianglesShown(*result.scene), TrianglesShown(JsonOf(content))) << path;
            eScene scene(*result.scene);
            for (std::size_t node = 0; node < scene.data.nodes.size(); ++node) {
                EXPECT_LT(scene.data.nodes[node].parent, static_cast<int>(node)) << path;
                EXPECT_TRUE(
                    std::isfinite(Length(scene.Node(static_cast<int>(node))->GetNodeTM(1600).GetTrans())))
                    << path;
            }
        }
    }
}

// Would catch an embedded and a separate form of one scene that differ in anything but where the images are.
TEST(GltfSamples, BothFormsOfTheTankAreOneScene) {
    const std::filesystem::path folder = SourceTree() / "../shared/samples/artist";
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "no samples";
    }
    const auto load = [&](const char* name) { return SceneOf(ContentOf(folder / name), {}); };
    const auto withoutFiles = [](eSceneData scene) {
        for (eMapData& map : scene.maps) {
            if (auto* bitmap = std::get_if<eBitmapMap>(&map.kind)) {
                bitmap->onDisk.clear();
            }
        }
        scene.temporaryFiles = nullptr;
        scene.file.clear();
        return scene;
    };
    const std::string separate = (folder / "tank_gltf/tank.gltf").string();
    const eLoadResult gltf = ImportGltf(separate, ContentOf(separate), {});
    ASSERT_TRUE(gltf.scene) << ProblemsOf(gltf);
    EXPECT_TRUE(withoutFiles(load("tank.glb")) == withoutFiles(*gltf.scene));
}

}  // namespace
