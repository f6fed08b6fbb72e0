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
    for (const eProblem& problem : result.problems) {
        ADD_FAILURE() << problem.place << ": " << problem.text;
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

// Would catch a state that is lost or lands on its neighbour, and property lists joined in another way.
TEST(SceneDocumentReader, TheStateOfANode) {
    const eSceneData scene = Read(R"({"scene": 1, "nodes": [
        {"name": "a", "properties": ["Model=x", "", "Экипаж=3"], "hidden": true, "group": "head",
         "jointFlags": [5, 7, 31], "visibility": 0.25},
        {"name": "b", "properties": "one\ntwo\n", "selected": true, "renderable": false,
         "group": ["head", "member"], "visibility": [[10, 0], [2.5, 0.5], [10, 1]]},
        {"name": "c", "group": "member"}]})");
    const eNodeData &a = scene.nodes[0], &b = scene.nodes[1], &c = scene.nodes[2];
    EXPECT_EQ(a.properties, std::string("Model=x\r\n\r\nЭкипаж=3"_ansi));
    EXPECT_EQ(b.properties, "one\ntwo\n");
    EXPECT_TRUE(a.hidden && !a.selected && a.renderable && a.groupHead && !a.groupMember);
    EXPECT_TRUE(!b.hidden && b.selected && !b.renderable && b.groupHead && b.groupMember);
    EXPECT_TRUE(!c.groupHead && c.groupMember);
    EXPECT_EQ(a.jointFlags, 0x800000A0U);
    EXPECT_EQ(a.visibility, 0.25F);
    const std::vector<eVisibilityKey> keys = {{2.5, 0.5F}, {10, 0}, {10, 1}};
    EXPECT_EQ(b.visibilityKeys, keys);
}

// Would catch rotations that are not normalised, a matrix read by columns, and keys that change places with
// others of their frame.
TEST(SceneDocumentReader, TransformsAndKeys) {
    const eSceneData scene = Read(R"({"scene": 1, "nodes": [
        {"name": "a", "transform": {"position": [1, 2, 3], "rotation": [0, 0, 3, 4], "scale": [1, 2, -1]},
         "offset": {"rotation": [0, 0, 0.6, 0.8], "position": [0.1, 0, 0]},
         "keys": [{"frame": 7, "scale": [1, 1, 2]}, {"frame": 3.5, "position": [9, 0, 0]},
                  {"frame": 3.5, "rotation": [0, 0, 0, -2]}]},
        {"name": "b", "transform": {"matrix": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12]},
         "keys": [{"frame": 0, "position": [0, 0, 0]}]}]})");
    const eNodeData &a = scene.nodes[0], &b = scene.nodes[1];
    const ePlacement parts{{1, 2, 3}, {0, 0, 0.6F, 0.8F}, {1, 2, -1}};
    EXPECT_EQ(a.transform.parts, parts);
    EXPECT_FALSE(a.transform.matrix);
    const ePlacement offset{{0.1F, 0, 0}, {0, 0, 0.6F, 0.8F}, {1, 1, 1}};
    EXPECT_EQ(a.offset, offset);
    ASSERT_EQ(a.keys.size(), 3U);
    EXPECT_EQ(a.keys[0], (eTransformKey{.frame = 3.5, .position = host::Point3{9, 0, 0}}));
    EXPECT_EQ(a.keys[1], (eTransformKey{.frame = 3.5, .rotation = eRotation{0, 0, 0, -1}}));
    EXPECT_EQ(a.keys[2], (eTransformKey{.frame = 7, .scale = host::Point3{1, 1, 2}}));
    EXPECT_EQ(b.transform.matrix, host::Matrix3({1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}));
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

// Would catch keys of simple objects mixed up, and defaults that differ from the format's.
TEST(SceneDocumentReader, SimpleObjects) {
    const std::pair<const char*, eObjectKind> cases[] = {
        {R"({"type": "helper"})", eHelperObject{}},
        {R"({"type": "target"})", eTargetObject{}},
        {R"({"type": "box", "width": 1, "length": 2, "height": 3})", eBoxObject{1, 2, 3}},
        {R"({"type": "sphere", "radius": 2})", eSphereObject{2, 32}},
        {R"({"type": "sphere", "radius": 2, "segments": 8})", eSphereObject{2, 8}},
        {R"({"type": "cylinder", "radius": 1, "height": 0})", eCylinderObject{1, 0, 18}},
        {R"({"type": "cylinder", "radius": 1, "height": 2, "sides": 3})", eCylinderObject{1, 2, 3}},
        {R"({"type": "rectangle", "width": 1, "length": 2})", eRectangleObject{1, 2}},
        {R"({"type": "circle", "radius": 1.5})", eCircleObject{1.5F}},
        {R"({"type": "line", "splines": [{"points": [[1, 2, 3]]}, {"points": [], "closed": false}]})",
         eLineObject{{{{{1, 2, 3}}, true}, {{}, false}}}},
        {R"({"type": "camera"})", eCameraObject{45, 160}},
        {R"({"type": "camera", "fov": 30, "targetDistance": 5})", eCameraObject{30, 5}},
        {R"({"type": "other", "superClass": 4294967295, "classId": [4105, 7]})",
         eOtherObject{0xFFFFFFFFU, {4105, 7}}},
        {R"({"type": "light", "kind": "omni"})", eLightObject{}},
    };
    for (const auto& [text, kind] : cases) {
        EXPECT_EQ(ReadObject(text).kind, kind) << text;
    }
}

// Would catch a light whose switches change places, and node lists of the wrong sense.
TEST(SceneDocumentReader, Lights) {
    const eSceneData scene = Read(R"({"scene": 1, "nodes": [{"name": "n", "object": {"type": "light",
        "kind": "directional", "on": false, "color": [1, 0.5, 0], "multiplier": 2, "hotspot": 10, "falloff": 20,
        "attenuation": {"start": 3, "end": 4}, "include": ["N", "m"], "affectDiffuse": false}},
        {"name": "m", "object": {"type": "light", "kind": "ambient", "exclude": ["n"], "affectSpecular": false,
        "ambientOnly": true}}]})");
    eLightObject first{.kind = eLightKind::Directional, .on = false, .color = {1, 0.5F, 0}, .multiplier = 2};
    first.hotspot = 10;
    first.falloff = 20;
    first.attenuation = eAttenuation{3, 4};
    first.include = true;
    first.listedNodes = {0, 1};
    first.affectDiffuse = false;
    eLightObject second{.kind = eLightKind::Ambient};
    second.listedNodes = {0};
    second.affectSpecular = false;
    second.ambientOnly = true;
    EXPECT_EQ(scene.objects[0].kind, eObjectKind(first));
    EXPECT_EQ(scene.objects[1].kind, eObjectKind(second));
}

// Would catch per-face values on the wrong face, and tables of channels or normals mixed up.
TEST(SceneDocumentReader, Meshes) {
    const eObjectData object = ReadObject(R"({"type": "mesh",
        "vertices": [[0, 0, 0], [1, 0, 0], [0, 1, 0], [1, 1, 0.5]], "faces": [[0, 1, 2], [2, 1, 3]],
        "smoothing": [4294967295, 2], "materialIds": [0, 65535], "hiddenFaces": [1],
        "maps": {"3": {"vertices": [[0.5, 1, 0]], "faces": [[0, 0, 0], [0, 0, 0]]},
                 "-2": {"vertices": [], "faces": [[7, 0, 4294967294], [0, 0, 0]]}},
        "normals": {"vectors": [[0, 0, 1], [0, 1, 0]], "faces": [[0, 1, -1], [1, 1, 0]], "explicit": [1]},
        "vertexKeys": [{"frame": 5, "vertices": [[0, 0, 0], [0, 0, 0], [0, 0, 0], [0, 0, 9]]},
                       {"frame": -1, "vertices": [[1, 1, 1], [0, 0, 0], [0, 0, 0], [0, 0, 0]]}]})");
    const auto& [mesh, vertexKeys] = std::get<eMeshObject>(object.kind);
    EXPECT_EQ(mesh.verts[3], (host::Point3{1, 1, 0.5F}));
    ASSERT_EQ(mesh.faces.size(), 2U);
    EXPECT_EQ(mesh.faces[0], (host::Face{{0, 1, 2}, 0xFFFFFFFFU, 0}));
    EXPECT_EQ(mesh.faces[1], (host::Face{{2, 1, 3}, 2, 0xFFFF0000U | host::Face::kHidden}));
    const std::vector<host::MapChannel> maps = {
        {3, {{0.5F, 1, 0}}, {{{0, 0, 0}}, {{0, 0, 0}}}},
        {-2, {}, {{{7, 0, 4294967294U}}, {{0, 0, 0}}}},
    };
    EXPECT_EQ(mesh.maps, maps);
    EXPECT_EQ(mesh.specifiedNormals,
              (host::MeshNormalSpec{{{0, 0, 1}, {0, 1, 0}}, {0, 1, -1, 1, 1, 0}, {false, true}}));
    ASSERT_EQ(vertexKeys.size(), 2U);
    EXPECT_EQ(vertexKeys[0].frame, -1);
    EXPECT_EQ(vertexKeys[1].vertices[3].z, 9);
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

// Would catch a shared object that is copied, inline objects that are shared, and modifiers out of order.
TEST(SceneDocumentReader, SharedObjectsAndModifiers) {
    const eSceneData scene = Read(R"({"scene": 1,
        "nodes": [{"name": "a", "object": "o"}, {"name": "b", "object": "o"}, {"name": "c", "object":
            {"type": "circle", "radius": 1}}, {"name": "d", "object": {"type": "circle", "radius": 1}}],
        "objects": {"o": {"type": "mesh", "vertices": [[0, 0, 0], [1, 1, 1]], "faces": [], "modifiers": [
            {"type": "other", "classId": [1, 2]},
            {"type": "skin", "bones": ["b", "a"], "weights": [[[1, 0.25], [0, 3]], []], "bindFrame": 2.5,
             "bindMatrices": [[1,0,0, 0,1,0, 0,0,1, 0,0,0], [1,0,0, 0,1,0, 0,0,1, 5,6,7]]}]}}})");
    EXPECT_EQ(scene.nodes[0].object, scene.nodes[1].object);
    EXPECT_NE(scene.nodes[2].object, scene.nodes[3].object);
    const eObjectData& object = scene.objects[static_cast<std::size_t>(scene.nodes[0].object)];
    EXPECT_EQ(object.id, "o");
    ASSERT_EQ(object.modifiers.size(), 2U);
    EXPECT_EQ(object.modifiers[0], eModifierKind(eOtherModifier{{1, 2}}));
    eSkinModifier skin;
    skin.bones = {1, 0};
    skin.firstWeight = {0, 2, 2};
    skin.weights = {{1, 0.25F}, {0, 3}};
    skin.bindFrame = 2.5;
    skin.bindMatrices = {host::Matrix3(), host::TransMatrix({5, 6, 7})};
    EXPECT_EQ(object.modifiers[1], eModifierKind(skin));
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

// Would catch maps out of document order, inputs that close up over an empty one, and coordinates mixed up.
TEST(SceneDocumentReader, Maps) {
    const eSceneData scene =
        Read(R"({"scene": 1, "materials": {"m": {"type": "standard", "maps": {"diffuse": {"map":
        {"type": "mix", "name": "смесь", "amount": 0.5, "uv": {"source": 3, "channel": 2, "offset": [1, 2],
         "tiling": [3, 4], "angle": 90}, "maps": [
            {"type": "rgbMultiply", "maps": [null, {"type": "bitmap", "file": "a.tga"}]},
            null,
            {"type": "normalBump", "normal": {"type": "bitmap", "file": "t\\б.tga", "crop": [0.1, 0.2, 0.3, 0.4],
             "amount": 2, "invert": true}}]}}, "bump": {"map": {"type": "checker", "colors": [[1, 1, 1], [0, 0, 1]]}},
        "opacity": {"map": {"type": "other", "classId": [5, 6], "color": [0, 1, 0]}}}}}})");
    ASSERT_EQ(scene.maps.size(), 7U);
    EXPECT_EQ(scene.maps[0],
              (eMapData{std::string("смесь"_ansi), {3, 2, {1, 2}, {3, 4}, 90}, eMixMap{{1, -1, 3}, 0.5F}}));
    EXPECT_EQ(scene.maps[1], (eMapData{"", {}, eRgbMultiplyMap{{-1, 2}}}));
    EXPECT_EQ(scene.maps[2].kind, eMapKind(eBitmapMap{.file = "a.tga"}));
    EXPECT_EQ(scene.maps[3].kind, eMapKind(eNormalBumpMap{4}));
    EXPECT_EQ(scene.maps[4].kind,
              eMapKind(eBitmapMap{std::string("t\\б.tga"_ansi), "", {0.1F, 0.2F}, {0.3F, 0.4F}, 2, true}));
    EXPECT_EQ(scene.maps[5].kind, eMapKind(eCheckerMap{{{{1, 1, 1}, {0, 0, 1}}}}));
    EXPECT_EQ(scene.maps[6].kind, eMapKind(eOtherMap{{5, 6}, {0, 1, 0}}));
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
    EXPECT_EQ(deeper.problems[0].text, "nodes nest deeper than 2000 levels");
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
