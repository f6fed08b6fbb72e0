#include <gmock/gmock.h>

#include "support/gltf_scene.h"

namespace {

using namespace standalone;
using namespace support;
using testing::ElementsAre;

// Would catch visibility that stops at the node that was hidden, keys of a node and of the one above that are
// not laid over one another, and a pointer that moves the wrong part.
TEST(GltfExtensions, WhatIsHiddenAboveIsHiddenBelow) {
    eGltfText file;
    file.Floats("SCALAR", {0, 1, 2});
    file.Bytes("SCALAR", {1, 0, 1});
    file.Floats("SCALAR", {0.5F, 1.5F, 3});
    file.Bytes("SCALAR", {0, 1, 0});
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 2, 0, 0});
    file.Section("nodes", R"([{"name": "top", "children": [1, 2]}, {"name": "own", "children": [3]},
        {"name": "plain"}, {"name": "off", "extensions": {"KHR_node_visibility": {"visible": false}}}])");
    const auto channel = [](int sampler, const std::string& pointer) {
        return "{\"sampler\": " + std::to_string(sampler) +
               ", \"target\": {\"path\": \"pointer\", \"extensions\": {\"KHR_animation_pointer\": "
               "{\"pointer\": \"" +
               pointer + "\"}}}}";
    };
    const std::string visible = "/extensions/KHR_node_visibility/visible";
    file.Section("animations", "[{\"channels\": [" + channel(0, "/nodes/0" + visible) + ", " +
                                   channel(1, "/nodes/1" + visible) + ", " +
                                   channel(2, "/nodes/2/translation") + ", " +
                                   channel(0, "/materials/0/alphaCutoff") +
                                   R"(], "samplers": [{"input": 0, "output": 1, "interpolation": "STEP"},
            {"input": 2, "output": 3, "interpolation": "STEP"}, {"input": 0, "output": 4}]}])");
    const eLoadResult result = Import(file.Text());
    ASSERT_TRUE(result.scene) << ProblemsOf(result);
    EXPECT_EQ(VisibilityOf(NodeNamed(*result.scene, "top")), "1 0+ 30- 60+");
    EXPECT_EQ(VisibilityOf(NodeNamed(*result.scene, "own")), "1 0- 60+ 90-");
    EXPECT_EQ(VisibilityOf(NodeNamed(*result.scene, "plain")), "1 0+ 30- 60+");
    EXPECT_EQ(VisibilityOf(NodeNamed(*result.scene, "off")), "0 0-");
    EXPECT_EQ(NodeNamed(*result.scene, "plain").keys.size(), 3U);
    EXPECT_THAT(WarningsOf(result),
                ElementsAre("the host can't show: animation of \"/materials/0/alphaCutoff\""));
}

// Would catch an instance at the wrong place, one that lacks what the node says of its mesh, and a wish for a
// mesh at the node that has none any more.
TEST(GltfExtensions, InstancesAreNodesThatShareTheMesh) {
    eGltfText file;
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});
    file.Floats("VEC3", {1, 2, 3, 4, 5, 6});
    file.Floats("VEC3", {1, 1, 1, 2, 3, 4});
    file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": 0}}]}])");
    file.Section("nodes", R"([{"name": "tree", "mesh": 0, "extras": {"Poly": true, "Layer": 2, "Key": 1},
        "extensions": {"EXT_mesh_gpu_instancing": {"attributes": {"TRANSLATION": 1, "SCALE": 2}}}},
        {"name": "zone", "mesh": 0, "extras": {"Volume": true},
        "extensions": {"EXT_mesh_gpu_instancing": {"attributes": {"TRANSLATION": 1}}}}])");
    const eLoadResult result = Import(file.Text());
    ASSERT_TRUE(result.scene) << ProblemsOf(result);
    const eSceneData& scene = *result.scene;
    EXPECT_EQ(NodeNamed(scene, "tree").properties, "Layer=2\r\nKey=1");
    const eNodeData& second = NodeNamed(scene, "tree_instance2");
    EXPECT_EQ(second.properties, "Poly\r\nLayer=2");
    EXPECT_EQ(second.transform.parts.position, (host::Point3{4, -6, 5}));
    EXPECT_EQ(second.transform.parts.scale, (host::Point3{2, 4, 3}));
    EXPECT_EQ(second.object, NodeNamed(scene, "tree_instance1").object);
    EXPECT_EQ(ObjectOf<eMeshObject>(scene, "zone").mesh.faces.size(), 1U);
    EXPECT_THAT(WarningsOf(result),
                ElementsAre("the host can't show: instances of skins, volumes, zones and points"));
}

// Would catch a packed mesh that leaves its artist's node, and a node taken for a packer's that says
// something.
TEST(GltfExtensions, WholeNumberedMeshesGoToTheNodeAbove) {
    eGltfText file;
    file.Shorts("VEC3", {0, 0, 0, 100, 0, 0, 0, 200, 300});
    file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": 0}}]}])");
    const std::string carrier = R"("mesh": 0, "translation": [1, 2, 3], "scale": [0.5, 0.5, 0.5]})";
    file.Section("nodes",
                 R"([{"name": "hull", "children": [1], "extras": {"Poly": true}},
        {"extras": {"empty": []}, )" +
                     carrier + R"(, {"name": "box", "children": [3], "extras": {"shape": "box"}}, {)" +
                     carrier + R"(, {"name": "two", "children": [5, 6]}, {)" + carrier + ", {" + carrier +
                     R"(, {"name": "told", "children": [8]}, {"extras": {"kind": [1]}, )" + carrier + "]");
    const eSceneData scene = SceneOf(file.Text());
    EXPECT_EQ(scene.nodes.size(), 7U);
    EXPECT_EQ(ObjectOf<eMeshObject>(scene, "hull").mesh.verts[2], (host::Point3{0, -300, 200}));
    EXPECT_EQ(NodeNamed(scene, "hull").offset.position, (host::Point3{1, -3, 2}));
    EXPECT_EQ(NodeNamed(scene, "hull").offset.scale, (host::Point3{0.5F, 0.5F, 0.5F}));
    EXPECT_EQ(ObjectOf<eBoxObject>(scene, "box"), (eBoxObject{100, 300, 200}));
    EXPECT_EQ(NodeNamed(scene, "box").offset.position, (host::Point3{26, -78, 2}));
    EXPECT_EQ(NodeNamed(scene, "two").children.size(), 2U);
    EXPECT_EQ(NodeNamed(scene, "told").children.size(), 1U);
}

// Would catch a variant other than the first, and a picture that is left out without a word.
TEST(GltfExtensions, MaterialsSayWhatTheyShowAndLack) {
    eGltfText file;
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});
    file.Section("extensionsRequired", R"(["KHR_texture_basisu", "KHR_materials_variants"])");
    file.Section("extensions",
                 R"({"KHR_materials_variants": {"variants": [{"name": "day"}, {"name": "night"}]}})");
    file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": 0}, "material": 0, "extensions":
        {"KHR_materials_variants": {"mappings": [{"material": 1, "variants": [1]}, {"material": 2, "variants": [0]}]}}
        }]}])");
    file.Section("nodes", R"([{"name": "a", "mesh": 0}])");
    file.Section("materials", R"([{"name": "x", "pbrMetallicRoughness": {"baseColorTexture": {"index": 0}}},
        {"name": "y", "pbrMetallicRoughness": {"baseColorTexture": {"index": 1}}}, {"name": "z"}])");
    file.Section("textures", R"([{"extensions": {"KHR_texture_basisu": {"source": 0}}}, {"source": 0}])");
    file.Section("images", R"([{"uri": "a.WebP"}])");
    const eLoadResult result = Import(file.Text());
    ASSERT_TRUE(result.scene) << ProblemsOf(result);
    const int material = NodeNamed(*result.scene, "a").material;
    EXPECT_EQ(result.scene->materials[static_cast<std::size_t>(material)].name, "z");
    EXPECT_TRUE(result.scene->maps.empty());
    EXPECT_THAT(
        WarningsOf(result),
        ElementsAre(
            "the host can't show: variants of materials but the first",
            "pictures of kinds that aren't read are left out: x (KHR_texture_basisu), y (image/webp)"));
}

}  // namespace
