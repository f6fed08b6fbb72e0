#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/gltf_scene.h"
#include "support/source_tree.h"

namespace {

using namespace standalone;
using namespace support;

std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
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
