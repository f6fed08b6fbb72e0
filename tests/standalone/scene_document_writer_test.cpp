#include "standalone/loaders/scene_document/scene_document_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

#include "base/ansi.h"
#include "standalone/data/file_content.h"
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
    for (const eLoadMessage& problem : result.problems) {
        ADD_FAILURE() << problem.Line().english << "\n" << text;
    }
    return result.scene.value_or(eSceneData{});
}

// Would catch a member that reader or writer forgets, takes for another, or cuts short, another default,
// order or form: in the file every key stands with a value other than its default, in the form in which it is
// written.
TEST(SceneDocumentWriter, WhatIsReadIsWrittenAgain) {
    std::string everything;
    ASSERT_TRUE(ReadFileContent((support::SourceTree() / "tests/standalone/everything.scene.json").string(),
                                everything)
                    .IsOk());
    const eWrittenDocument written = WriteSceneDocument(Read(everything), kPath);
    EXPECT_THAT(written.warnings, IsEmpty());
    EXPECT_EQ(written.text, everything);

    for (const auto& entry : std::filesystem::directory_iterator(support::SourceTree() / "examples")) {
        if (entry.path().string().ends_with(".scene.json")) {
            const eLoadResult example = LoadScene(entry.path().string());
            ASSERT_TRUE(example.scene) << entry.path();
            const std::string text = WriteSceneDocument(*example.scene, entry.path().string()).text;
            EXPECT_EQ(ReadSceneDocument(text, entry.path().string()).scene, example.scene) << text;
        }
    }
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
    ASSERT_EQ(written.warnings.size(), 1U);
    EXPECT_THAT(written.warnings[0].text.english, HasSubstr("written as \"кость_3\""));
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
    EXPECT_THAT(WriteSceneDocument(scene, "").warnings.at(0).text.english, HasSubstr("not finite"));
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
