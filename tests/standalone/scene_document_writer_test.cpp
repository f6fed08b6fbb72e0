#include "standalone/loaders/scene_document/scene_document_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

#include "base/ansi.h"
#include "standalone/loaders/json/json_layout.h"
#include "standalone/loaders/json/json_writer.h"
#include "standalone/loaders/load_scene.h"
#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "support/scene_builder.h"
#include "support/source_tree.h"

namespace {

using namespace standalone;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kPath = "/scenes/a.scene.json";

eSceneData Read(std::string_view text) {
    eLoadResult result = ReadSceneDocument(text, kPath);
    for (const eProblem& problem : result.problems) {
        ADD_FAILURE() << problem.place << ": " << problem.text << "\n" << text;
    }
    return result.scene.value_or(eSceneData{});
}

// A document in which every key stands with a value other than its default.
constexpr std::string_view kEverything = R"({"scene": 1, "file": "C:\\Сцены\\танк.max", "unitMetres": 0.0254,
  "frameTicks": 200, "range": [-3, 50], "ambient": [0.1, 0.2, 0.3],
  "selectionSets": [{"name": "всё", "nodes": ["корень", "лампа"]}, {"nodes": []}],
  "materials": {
    "все/~\"": {"type": "multi", "name": "Все", "materials": ["kirpich", null]},
    "kirpich": {"type": "standard", "ambient": [0.1, 0.2, 0.3], "diffuse": [0, 0, 1], "specular": [1, 0, 0],
      "shininess": 0.3, "shininessStrength": 0.7, "opacity": 0.9, "twoSided": true, "maps": {
        "diffuse": {"map": {"type": "bitmap", "name": "b", "file": "t/a.tga", "crop": [0.1, 0.2, 0.3, 0.4],
          "amount": 0.6, "invert": true, "uv": {"source": 1, "channel": 2, "offset": [1, 2], "tiling": [3, 4],
          "angle": 5}}, "amount": 0.4, "enabled": false},
        "bump": {"map": {"type": "normalBump", "normal": {"type": "bitmap", "file": "/x/n.tga"}}},
        "filter": {"map": {"type": "mix", "maps": [null, {"type": "vertexColor"}], "amount": 0.25}}}},
    "layers": {"type": "twoLayer", "materials": [null, "kirpich"]},
    "glow": {"type": "sorrel", "material": "layers", "blend": 1, "modulate2x": 2, "environment": 3,
      "strength": 0.5, "mask": {"type": "checker", "colors": [[1, 1, 1], [0, 0, 1]]}, "environmentMap":
      {"type": "rgbMultiply", "maps": [{"type": "other", "classId": [7, 8], "color": [0.5, 0, 0]}, null]}},
    "odd": {"type": "other", "classId": [1, 2], "diffuse": [1, 1, 1], "opacity": 0.5, "maps":
      {"opacity": {"map": {"type": "vertexColor"}}}}},
  "objects": {
    "mesh": {"type": "mesh", "vertices": [[0, 0, 0], [1, 0.1, -1e-20], [3e10, 1, 1]], "faces": [[0, 1, 2], [2, 1, 0]],
      "smoothing": [2, 4294967295], "materialIds": 5, "hiddenFaces": [1],
      "maps": {"2": {"vertices": [[0, 0, 0]], "faces": [[0, 0, 0], [0, 0, 0]]},
               "-2": {"vertices": [], "faces": [[9, 9, 9], [0, 0, 0]]}},
      "normals": {"vectors": [[0, 0, 1], [1, 0, 0]], "faces": [[0, -1, 1], [1, 1, 1]], "explicit": [0]},
      "vertexKeys": [{"frame": 0.5, "vertices": [[1, 1, 1], [2, 2, 2], [3, 3, 3]]}],
      "modifiers": [{"type": "other", "classId": [3, 4]},
        {"type": "skin", "bones": ["лампа", "корень"], "weights": [[[0, 0.25], [1, 0.75]], [], [[1, 2]]],
         "bindFrame": 1.5, "bindMatrices": [[1,2,3,4,5,6,7,8,9,10,11,12], [1,0,0,0,1,0,0,0,1,0,0,0]]}]},
    "unused": {"type": "target"}},
  "nodes": [
    {"name": "Корень", "properties": ["Model=a\tb", "", "\"\\", "one\nline", ""], "hidden": true, "selected": true,
     "renderable": false, "group": ["head", "member"], "jointFlags": [0, 5, 31], "visibility": [[1.5, 0], [2, 1]],
     "transform": {"position": [1, 2, 3], "rotation": [0, 0, 0.6, 0.8], "scale": [1, 1, 2]},
     "keys": [{"frame": 1, "position": [0, 0, 0], "rotation": [1, 0, 0, 0], "scale": [2, 2, 2]}, {"frame": 2}],
     "offset": {"position": [1, 0, 0], "rotation": [0, 1, 0, 0], "scale": [3, 3, 3]},
     "object": "mesh", "material": "kirpich", "target": "лампа", "children": [
       {"name": "box", "object": {"type": "box", "width": 1, "length": 2, "height": 3}, "group": "member"},
       {"name": "sphere", "object": {"type": "sphere", "radius": 1, "segments": 16}, "visibility": 0.5,
        "children": [{"name": "cylinder", "object": {"type": "cylinder", "radius": 1, "height": 2, "sides": 9}}]},
       {"name": "again", "object": "mesh", "transform": {"matrix": [1,2,3,4,5,6,7,8,9,10,11,12]}}]},
    {"name": "ЛАМПА", "group": "head", "object": {"type": "light", "kind": "spot", "on": false, "color": [1, 0, 0],
      "multiplier": 2, "hotspot": 10, "falloff": 20, "attenuation": {"start": 1, "end": 2}, "include": ["корень"],
      "affectDiffuse": false, "affectSpecular": false, "ambientOnly": true}},
    {"name": "lamp2", "object": {"type": "light", "kind": "omni", "exclude": ["лампа"]}},
    {"name": "rectangle", "object": {"type": "rectangle", "width": 1, "length": 2}},
    {"name": "circle", "object": {"type": "circle", "radius": 1}},
    {"name": "line", "object": {"type": "line", "splines": [{"points": [[0, 0, 0]], "closed": false}, {"points": []}]}},
    {"name": "camera", "object": {"type": "camera", "fov": 30, "targetDistance": 7}},
    {"name": "helper", "object": {"type": "helper", "modifiers": [{"type": "other", "classId": [0, 0]}]}},
    {"name": "other", "object": {"type": "other", "superClass": 16, "classId": [4294967295, 1]}}]})";

// Would catch a member that the writer forgets, writes under another key, or cuts short.
TEST(SceneDocumentWriter, WhatIsReadIsWrittenAndReadAgain) {
    const eSceneData scene = Read(kEverything);
    const eWrittenDocument written = WriteSceneDocument(scene, kPath);
    EXPECT_THAT(written.warnings, IsEmpty());
    EXPECT_EQ(Read(written.text), scene) << written.text;
    EXPECT_EQ(WriteSceneDocument(Read(written.text), kPath).text, written.text);

    for (const auto& entry : std::filesystem::directory_iterator(support::SourceTree() / "examples")) {
        if (entry.path().string().ends_with(".scene.json")) {
            const eLoadResult example = LoadScene(entry.path().string());
            ASSERT_TRUE(example.scene) << entry.path();
            const std::string text = WriteSceneDocument(*example.scene, entry.path().string()).text;
            EXPECT_EQ(ReadSceneDocument(text, entry.path().string()).scene, example.scene) << text;
        }
    }
}

// Would catch defaults that are written all the same, another order of keys, and lines too long to read.
TEST(SceneDocumentWriter, TheTextIsShortAndInOrder) {
    support::eSceneBuilder scene;
    scene.Settings().file = kPath;
    const int iron = scene.Material("iron", eStandardMaterial{.opacity = 0.1F});
    support::eNode tank = scene.Node("tank").Property("Model=units/tank").Object(eHelperObject{});
    support::eNode left = tank.Child("wheel_l").Position(0, 90, 40).Material(iron);
    left.Object(eCylinderObject{.radius = 40, .height = 20.5F});
    tank.Child("wheel_r").Property("Poly").Property("IKType=revolute").SameObject(left);
    EXPECT_EQ(WriteSceneDocument(scene.Build(), kPath).text, R"({
  "scene": 1,
  "materials": {"iron": {"type": "standard", "name": "iron", "opacity": 0.1}},
  "objects": {"object": {"type": "cylinder", "radius": 40, "height": 20.5}},
  "nodes": [
    {
      "name": "tank",
      "properties": ["Model=units/tank"],
      "object": {"type": "helper"},
      "children": [
        {
          "name": "wheel_l",
          "transform": {"position": [0, 90, 40]},
          "object": "object",
          "material": "iron"
        },
        {"name": "wheel_r", "properties": ["Poly", "IKType=revolute"], "object": "object"}
      ]
    }
  ]
}
)");
}

// Would catch references that silently move to another node of the same name, and ids that clash.
TEST(SceneDocumentWriter, RecordsThatCannotBeToldApartGetNewNames) {
    support::eSceneBuilder scene;
    scene.Node("Кость"_ansi);
    scene.Node("кость_2"_ansi);
    scene.Node("camera").Target(scene.Node("кость"_ansi));
    scene.Node("кость"_ansi);
    eSceneData data = scene.Build();
    data.materials = {
        {"m", "", eMultiMaterial{{1}}}, {"m", "", eStandardMaterial{}}, {"", "", eStandardMaterial{}}};
    const eWrittenDocument written = WriteSceneDocument(data, kPath);
    EXPECT_THAT(written.warnings, ElementsAre(HasSubstr("written as \"кость_3\"")));
    const eSceneData again = Read(written.text);
    EXPECT_EQ(again.nodes[3].name, std::string("кость_3"_ansi));
    EXPECT_EQ(again.nodes[2].target, 3);
    EXPECT_EQ(again.nodes[4].name, std::string("кость"_ansi));
    EXPECT_EQ(again.materials[0].kind, data.materials[0].kind);
    EXPECT_EQ(again.materials[1].id, "m_2");
    EXPECT_EQ(again.materials[2].id, "material");
}

// Would catch a converted document that looks for its bitmaps in its own folder.
TEST(SceneDocumentWriter, BitmapsBesideAnotherSceneKeepTheirFolder) {
    support::eSceneBuilder scene;
    scene.Settings().file = "/models/сцена.glb"_ansi;
    for (const char* file : {"t/a.tga", "/abs.tga", "D:\\b.tga", ""}) {
        scene.Map(eBitmapMap{.file = file});
    }
    scene.Map(eBitmapMap{.file = "inside.png", .onDisk = "/tmp/x/inside.png"});
    eStandardMaterial material;
    for (int map = 0; map < 5; ++map) {
        material.maps[static_cast<std::size_t>(map)].map = map;
    }
    scene.Material("m", material);
    const eWrittenDocument written = WriteSceneDocument(scene.Build(), kPath);
    std::vector<std::string> files;
    for (const eMapData& map : Read(written.text).maps) {
        files.push_back(std::get<eBitmapMap>(map.kind).file);
    }
    EXPECT_THAT(files, ElementsAre("/models/t/a.tga", "/abs.tga", "D:\\b.tga", "", "inside.png"));
    EXPECT_THAT(WriteSceneDocument(scene.Build(), "/models/b.scene.json").text,
                testing::AllOf(HasSubstr("\"t/a.tga\""), HasSubstr("\"file\": \"/models/сцена.glb\"")));
}

// Would catch digits that give another number when read again, and numbers that JSON can't say.
TEST(SceneDocumentWriter, EveryNumberSurvives) {
    eSceneData scene;
    std::mt19937 random(7);
    eLineObject line;
    line.splines.emplace_back().points.push_back(
        {-0.0F, std::numeric_limits<float>::denorm_min(), 3.4028235e38F});
    while (line.splines[0].points.size() < 20000) {
        const auto number = [&] {
            const float any = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
            return std::isfinite(any) ? any : 1;
        };
        line.splines[0].points.push_back({number(), number(), number()});
    }
    scene.objects.push_back({"line", line, {}});
    eSceneData again = Read(WriteSceneDocument(scene, "").text);
    EXPECT_EQ(again.objects, scene.objects);
    EXPECT_TRUE(std::signbit(std::get<eLineObject>(again.objects[0].kind).splines[0].points[0].x));

    scene.unitMetres = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(WriteSceneDocument(scene, "").warnings, ElementsAre(HasSubstr("not finite")));
}

// Would catch a long list that takes a line for every number, and brackets inside texts counted as brackets.
TEST(JsonLayout, LongListsShareLines) {
    std::string numbers = "[";
    std::string pairs = "[";
    for (int i = 100; i < 150; ++i) {
        numbers += (i == 100 ? "" : ",") + std::to_string(i);
        pairs += (i == 100 ? "[" : ",[") + std::to_string(i) + ",\"]\\\"\"]";
    }
    const std::string text = LayOutJson("{\"n\":" + numbers + "],\"p\":" + pairs + "],\"e\":[],\"o\":{}}");
    EXPECT_THAT(text, testing::StartsWith("{\n  \"n\": [\n    100, 101, 102, 103, "));
    EXPECT_THAT(text, HasSubstr("\n  \"p\": [\n    [100, \"]\\\"\"], [101, \"]\\\"\"], "));
    EXPECT_THAT(text, testing::EndsWith("\n  ],\n  \"e\": [],\n  \"o\": {}\n}\n"));
    std::size_t longest = 0;
    for (std::size_t start = 0; start < text.size(); start = text.find('\n', start) + 1) {
        longest = std::max(longest, text.find('\n', start) - start);
    }
    EXPECT_LE(longest, 100U);
    EXPECT_GT(longest, 90U);
}

}  // namespace
