#include "standalone/loaders/scene_document/scene_document_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "base/ansi.h"
#include "standalone/data/file_content.h"
#include "standalone/loaders/load_scene.h"
#include "standalone/loaders/scene_format.h"
#include "support/source_tree.h"
#include "support/temp_folder.h"

namespace {

using namespace standalone;
using testing::ElementsAre;
using testing::IsEmpty;

eSceneData Read(std::string_view text, const std::string& path = "/scenes/a.scene.json") {
    eLoadResult result = ReadSceneDocument(text, path);
    for (const eLoadMessage& problem : result.problems) {
        ADD_FAILURE() << problem.Line().english;
    }
    EXPECT_THAT(result.warnings, IsEmpty());
    return result.scene.value_or(eSceneData{});
}

// The one object of a document whose only node holds it.
eObjectData ReadObject(const std::string& object) {
    const eSceneData scene = Read(R"({"scene": 1, "nodes": [{"name": "n", "object": )" + object + "}]}");
    return scene.objects.empty() ? eObjectData{} : scene.objects.front();
}

std::string FileOfTree(const char* name) {
    std::string content;
    EXPECT_TRUE(ReadFileContent((support::SourceTree() / name).string(), content).IsOk()) << name;
    return content;
}

// Would catch a default that differs from the format's.
TEST(SceneDocumentReader, TheEmptyDocumentHasTheDefaults) {
    eSceneData expected;
    expected.file = "/scenes/a.scene.json";
    EXPECT_EQ(Read(R"({"scene": 1})"), expected);
}

// Would catch a setting that goes nowhere, and bitmap files looked for beside the name in `file` instead of
// beside the document.
TEST(SceneDocumentReader, SettingsArriveInTheScene) {
    const eSceneData scene = Read(
        R"({"scene": 1.0, "file": "X:\\Сцены\\танк.max", "unitMetres": 0.0254, "frameTicks": 200,
            "range": [-5, 70], "ambient": [0, 0.5, 1]})",
        "/сцены/a.scene.json");
    EXPECT_EQ(scene.file, std::string("X:\\Сцены\\танк.max"_ansi));
    EXPECT_EQ(scene.folder, std::string("/сцены"_ansi));
    EXPECT_EQ(scene.unitMetres, 0.0254);
    EXPECT_EQ(scene.frameTicks, 200);
    EXPECT_EQ(scene.firstFrame, -5);
    EXPECT_EQ(scene.lastFrame, 70);
    EXPECT_EQ(scene.ambient, (host::Color{0, 0.5F, 1}));
}

// Would catch nodes out of depth-first order, wrong parents, and references that look in document order of
// the references instead of the nodes, or mind letter case.
TEST(SceneDocumentReader, NodesStandDepthFirstAndReferencesFindTheFirst) {
    const eSceneData scene = Read(R"({"scene": 1,
        "selectionSets": [{"name": "пара", "nodes": ["ТВИН", "b"]}, {"nodes": []}],
        "nodes": [
            {"name": "a", "target": "твин", "children": [
                {"name": "c", "children": [{"name": "Твин"}]},
                {"name": "d"}]},
            {"name": "твин", "children": [{"name": "b"}]}]})");
    std::vector<std::string> names;
    std::vector<int> parents;
    for (const eNodeData& node : scene.nodes) {
        names.push_back(ToUtf8(node.name));
        parents.push_back(node.parent);
    }
    EXPECT_THAT(names, ElementsAre("a", "c", "Твин", "d", "твин", "b"));
    EXPECT_THAT(parents, ElementsAre(-1, 0, 1, 0, -1, 4));
    EXPECT_THAT(scene.roots, ElementsAre(0, 4));
    EXPECT_THAT(scene.nodes[0].children, ElementsAre(1, 3));
    EXPECT_EQ(scene.nodes[0].target, 2);
    ASSERT_EQ(scene.selectionSets.size(), 2U);
    EXPECT_EQ(scene.selectionSets[0].name, std::string("пара"_ansi));
    EXPECT_THAT(scene.selectionSets[0].nodes, ElementsAre(2, 5));
}

// Would catch rotations that are not normalised, keys that change places with others of their frame, and
// property text of several lines taken for a list.
TEST(SceneDocumentReader, RotationsKeysAndTextAreTakenAsTheyAre) {
    const eSceneData scene = Read(R"({"scene": 1, "nodes": [
        {"name": "a", "transform": {"rotation": [0, 0, 3, 4]}, "properties": "one\ntwo\n",
         "visibility": [[10, 0], [2.5, 0.5], [10, 1]],
         "keys": [{"frame": 7, "scale": [1, 1, 2]}, {"frame": 3.5, "position": [9, 0, 0]},
                  {"frame": 3.5, "rotation": [0, 0, 0, -2]}]}]})");
    const eNodeData& a = scene.nodes[0];
    EXPECT_EQ(a.transform.parts.rotation, (eRotation{0, 0, 0.6F, 0.8F}));
    EXPECT_EQ(a.properties, "one\ntwo\n");
    EXPECT_EQ(a.visibilityKeys, (std::vector<eVisibilityKey>{{2.5, 0.5F}, {10, 0}, {10, 1}}));
    EXPECT_EQ(a.keys, (std::vector<eTransformKey>{{.frame = 3.5, .position = host::Point3{9, 0, 0}},
                                                  {.frame = 3.5, .rotation = eRotation{0, 0, 0, -1}},
                                                  {.frame = 7, .scale = host::Point3{1, 1, 2}}}));
}

// Would catch a number that is rounded on the way: to single precision twice, or by the locale.
TEST(SceneDocumentReader, NumbersAreRoundedOnce) {
    // A decimal just above the middle between 1 and the next float; its nearest double is the middle itself.
    const eSceneData scene = Read(R"({"scene": 1, "unitMetres": 1e-3, "nodes": [{"name": "a", "transform":
        {"position": [1.00000005960464477539062500000001, 1e-60, -16777217], "scale": [1E2, 3.4028234e38, 1]}}]})");
    const ePlacement& parts = scene.nodes[0].transform.parts;
    EXPECT_EQ(parts.position.x, std::nextafter(1.0F, 2.0F));
    EXPECT_EQ(parts.position.y, 0);
    EXPECT_EQ(parts.position.z, -16777216);
    EXPECT_EQ(parts.scale.x, 100);
    EXPECT_EQ(parts.scale.y, 3.4028234e38F);
    EXPECT_EQ(scene.unitMetres, 0.001);
}

// Would catch a default that applies to no face or to the first only, and normals that are explicit only when
// listed.
TEST(SceneDocumentReader, ValuesForAllFacesAndDefaultsOfMeshes) {
    const std::string start = R"({"type": "mesh", "vertices": [[0, 0, 0]], "faces": [[0, 0, 0], [0, 0, 0]])";
    const auto plain = std::get<eMeshObject>(ReadObject(start + "}").kind).mesh;
    EXPECT_EQ(plain.faces[1], (host::Face{{0, 0, 0}, 1, 0}));
    EXPECT_FALSE(plain.specifiedNormals);
    const auto all = std::get<eMeshObject>(ReadObject(start + R"(, "smoothing": 0, "materialIds": 3,
        "normals": {"vectors": [[0, 0, 1]], "faces": [[0, 0, 0], [0, 0, 0]]}})")
                                               .kind)
                         .mesh;
    EXPECT_EQ(all.faces[0], (host::Face{{0, 0, 0}, 0, 3U << 16}));
    EXPECT_EQ(all.faces[1], all.faces[0]);
    EXPECT_THAT(all.specifiedNormals->explicitNormals, ElementsAre(true));
}

// Would catch slots at the wrong sub-map index, materials out of document order, references that look only
// upward, and parameters mixed up.
TEST(SceneDocumentReader, Materials) {
    const eSceneData scene = Read(R"({"scene": 1, "materials": {
        "multi": {"type": "multi", "name": "Все", "materials": ["plain", null, "plain"]},
        "layers": {"type": "twoLayer", "materials": [null, "full"]},
        "glow": {"type": "sorrel", "material": "layers", "blend": 1, "modulate2x": 2, "environment": 3,
                 "strength": 0.5, "mask": {"type": "vertexColor"}, "environmentMap": {"type": "vertexColor"}},
        "plain": {"type": "standard"},
        "full": {"type": "standard", "ambient": [0.1, 0.2, 0.3], "diffuse": [0, 0, 0], "specular": [1, 1, 1],
                 "shininess": 1, "shininessStrength": 2, "opacity": 0.5, "twoSided": true, "maps": {
                 "displacement": {"map": {"type": "vertexColor"}, "amount": 0.5, "enabled": false},
                 "specularLevel": {"map": {"type": "vertexColor"}}}},
        "odd": {"type": "other", "classId": [9, 8], "diffuse": [1, 0, 0], "opacity": 0}}})");
    ASSERT_EQ(scene.materials.size(), 6U);
    EXPECT_EQ(scene.materials[0],
              (eMaterialData{"multi", std::string("Все"_ansi), eMultiMaterial{{3, -1, 3}}}));
    EXPECT_EQ(scene.materials[1].kind, eMaterialKind(eTwoLayerMaterial{{-1, 4}}));
    EXPECT_EQ(scene.materials[2].kind, eMaterialKind(eSorrelMaterial{1, 1, 2, 3, 0.5F, 0, 1}));
    EXPECT_EQ(scene.materials[3].kind, eMaterialKind(eStandardMaterial{}));
    eStandardMaterial full{{0.1F, 0.2F, 0.3F}, {0, 0, 0}, {1, 1, 1}, 1, 2, 0.5F, true, {}};
    full.maps[3] = {3, 1, true};
    full.maps[11] = {2, 0.5F, false};
    EXPECT_EQ(scene.materials[4].kind, eMaterialKind(full));
    EXPECT_EQ(scene.materials[5].kind, eMaterialKind(eOtherMaterial{{9, 8}, {1, 0, 0}, 0, {}}));
}

std::string NestedNodes(int levels) {
    std::string text = R"({"scene": 1, "nodes": [)";
    for (int level = 0; level < levels; ++level) {
        text += R"({"name": "n", "children": [)";
    }
    for (int level = 0; level < levels; ++level) {
        text += "]}";
    }
    return text + "]}";
}

// Would catch a reader that walks the tree by recursion, or one that follows any depth.
TEST(SceneDocumentReader, DeepTreesAreReadUpToALimit) {
    EXPECT_EQ(Read(NestedNodes(2000)).nodes.size(), 2000U);
    const eLoadResult deeper = ReadSceneDocument(NestedNodes(2001), "");
    ASSERT_EQ(deeper.problems.size(), 1U);
    EXPECT_EQ(deeper.problems[0].text.english, "nodes nest deeper than 2000 levels");
    EXPECT_FALSE(ReadSceneDocument(NestedNodes(50000), "").scene);
    EXPECT_FALSE(ReadSceneDocument(std::string(200000, '['), "").scene);
}

// Would catch a format told by the file's name, and a glTF file taken for a scene document.
TEST(SceneFormat, TheContentDecides) {
    const auto isDocument = [](std::string_view bytes) {
        return SceneFormatOf(bytes) == eSceneFormat::Document;
    };
    EXPECT_TRUE(isDocument("\xEF\xBB\xBF \n{\"scene\": 1}"));
    EXPECT_TRUE(isDocument(R"({"nodes": [{"asset": 1}], "file": "\"asset\": {", "scene)"));
    EXPECT_TRUE(isDocument(R"({"file": "asset", "scene": 1})"));
    EXPECT_EQ(SceneFormatOf(R"({"scene": 1, "nodes": [{"name": "a"}], "asset" : {"version": "2.0"}})"),
              eSceneFormat::Gltf);
    EXPECT_EQ(SceneFormatOf("glTF\2"), eSceneFormat::Gltf);
    EXPECT_EQ(SceneFormatOf(" "), eSceneFormat::Unknown);

    const support::eTempFolder folder;
    folder.Write("сцена.bin", R"({"scene": 1, "nodes": [{"name": "a"}]})");
    folder.Write("a.scene.json", "no scene");
    const eLoadResult loaded = LoadScene(folder / "сцена.bin");
    ASSERT_TRUE(loaded.scene);
    EXPECT_EQ(ToUtf8(loaded.scene->file), folder / "сцена.bin");
    EXPECT_FALSE(LoadScene(folder / "a.scene.json").scene);
    EXPECT_THAT(LoadScene(folder / "none").problems, testing::SizeIs(1));
}

// Would catch an example that no longer keeps to the grammar, and one in the manual that is no example.
TEST(SceneDocumentReader, TheExamplesAreGood) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(support::SourceTree() / "examples")) {
        if (entry.path().string().ends_with(".scene.json")) {
            ++count;
            const eLoadResult result = LoadScene(entry.path().string());
            EXPECT_TRUE(result.scene) << entry.path();
        }
    }
    EXPECT_GE(count, 10);
    EXPECT_THAT(FileOfTree("docs/scene-document.md"),
                testing::HasSubstr(FileOfTree("examples/tank.scene.json")));
}

}  // namespace
