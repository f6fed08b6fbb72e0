#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "standalone/loaders/scene_document/scene_document_reader.h"
#include "support/source_tree.h"

namespace {

using namespace standalone;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

std::vector<std::string> Problems(std::string_view text) {
    const eLoadResult result = ReadSceneDocument(text, "/a.scene.json");
    EXPECT_EQ(result.scene.has_value(), result.problems.empty());
    std::vector<std::string> lines;
    for (const eLoadMessage& problem : result.problems) {
        lines.push_back(problem.Line().english);
    }
    return lines;
}

// Would catch a run that stops at the first fault, or tells faults in the order of its own phases.
TEST(SceneDocumentErrors, AllAreToldInTheOrderOfTheDocument) {
    EXPECT_THAT(
        Problems(R"({"scene": 1, "selectionSets": [{"name": "s", "nodes": ["nobody"]}],
        "nodes": [{"name": "a", "object": "none", "colour": 1, "hidden": 1},
                  {"object": {"type": "box", "width": "1", "length": 1, "height": -1}},
                  {"name": "c", "children": [{"name": "d", "name": "e", "material": "m"}]}],
        "unitMetres": 0, "a~/b": 1, "materials": {"m": {"type": "velvet"}, "m": {"type": "standard"}}})"),
        ElementsAre("/selectionSets/0/nodes/0: there is no node with the name \"nobody\"",
                    "/nodes/0/object: there is no object with the id \"none\"",
                    "/nodes/0/colour: unknown key", "/nodes/0/hidden: expected true or false, found a number",
                    "/nodes/1: the key \"name\" is missing",
                    "/nodes/1/object/width: expected a number, found a string",
                    "/nodes/1/object/height: a size must be 0 or more",
                    "/nodes/2/children/0/name: the key stands twice in one object",
                    "/unitMetres: the number must be above 0", "/a~0~1b: unknown key",
                    "/materials/m/type: unknown word \"velvet\", expected one of \"standard\", "
                    "\"multi\", \"twoLayer\", \"sorrel\", \"other\"",
                    "/materials/m: the key stands twice in one object"));
}

// Would catch a key that takes anything or tells its fault at the wrong place, an object that reaches the
// host half filled, an index beyond its table, and materials that can't be walked to an end. The file has a
// fault a line, and what it must tell in the next; each stands at the @ of the frame above it.
TEST(SceneDocumentErrors, EachFaultIsToldAtItsPlace) {
    std::ifstream file(support::SourceTree() / "tests/standalone/scene_document_errors.txt");
    std::string line, frame, place, told;
    int faults = 0;
    while (std::getline(file, line)) {
        if (line.starts_with("frame ")) {
            frame = line.substr(6);
        } else if (line.starts_with("place ")) {
            place = line.substr(6);
        } else if (!line.empty()) {
            ASSERT_TRUE(std::getline(file, told));
            const std::size_t colon = told.find(": ");
            const std::string text = std::string(frame).replace(frame.find('@'), 1, line);
            EXPECT_THAT(Problems(text),
                        ElementsAre(testing::AllOf(testing::StartsWith(place + told.substr(1, colon + 1)),
                                                   HasSubstr(told.substr(colon + 2)))))
                << text;
            ++faults;
        }
    }
    EXPECT_EQ(faults, 97);
    EXPECT_THAT(Problems("[]"), ElementsAre("/: expected an object, found a list"));
    EXPECT_THAT(Problems("{}"), ElementsAre("/: the key \"scene\" is missing"));
    EXPECT_THAT(Problems(R"({"scene": 2, "brandNew": 1})"), ElementsAre(HasSubstr("version 2")));
}

// Would catch a fault without its code, at the wrong node, or one that a Russian artist can't read.
TEST(SceneDocumentErrors, FaultsOfNodesNameThem) {
    const eLoadResult result = ReadSceneDocument(
        R"({"scene": 1, "nodes": [{"name": "tank", "children": [{"name": "gun", "object": null}]}]})",
        "/a.scene.json");
    ASSERT_THAT(result.problems, SizeIs(1));
    EXPECT_STREQ(RowOf(result.problems[0].id).code, "scene-document.expected");
    EXPECT_EQ(result.problems[0].node, "tank/gun");
    EXPECT_EQ(result.problems[0].text.russian, "здесь нужно: объект или id объекта");
}

// Would catch a chain of maps or materials that whoever walks it can follow to the end of the stack.
TEST(SceneDocumentErrors, NestingHasLimits) {
    const auto maps = [](int levels) {
        std::string map = R"({"type": "vertexColor"})";
        for (int level = 1; level < levels; ++level) {
            map = R"({"type": "normalBump", "normal": )" + map + "}";
        }
        return R"({"scene": 1, "materials": {"m": {"type": "sorrel", "mask": )" + map + "}}}";
    };
    EXPECT_THAT(Problems(maps(50)), SizeIs(0));
    EXPECT_THAT(Problems(maps(51)), ElementsAre(HasSubstr("maps nest deeper than 50 levels")));

    const auto materials = [](int levels) {
        std::string text = R"({"scene": 1, "materials": {"0": {"type": "standard"})";
        for (int level = 1; level < levels; ++level) {
            text += ", \"" + std::to_string(level) + R"(": {"type": "multi", "materials": [")" +
                    std::to_string(level - 1) + "\"]}";
        }
        return text + "}}";
    };
    EXPECT_THAT(Problems(materials(50)), SizeIs(0));
    EXPECT_THAT(Problems(materials(51)), ElementsAre("/materials/50: materials nest deeper than 50 levels"));
}

// Would catch a syntax error without its place, one placed by characters instead of bytes, and broken bytes
// that reach the terminal.
TEST(SceneDocumentErrors, WhatIsNoJsonTellsLineColumnAndByte) {
    EXPECT_THAT(Problems("{\"scene\": 1,\n \"file\": tru}"),
                ElementsAre(HasSubstr("line 2, column 13, byte 25: syntax error")));
    EXPECT_THAT(Problems("{\"scene\": 1"), ElementsAre(HasSubstr("line 1, column 12, byte 11")));
    EXPECT_THAT(Problems(""), ElementsAre(HasSubstr("line 1, column 1, byte 0")));
    EXPECT_THAT(Problems("{\"scene\": 1e999}"), ElementsAre(HasSubstr("the number is too large")));
    EXPECT_THAT(Problems("{\"scene\": NaN}"), ElementsAre(HasSubstr("line 1, column 11")));
    for (const char* broken :
         {"{\"file\": \"\xFF\"}", "{\"file\": \"\xC0\x80\"}", "{\"file\": \"\\ud800\"}"}) {
        const std::vector<std::string> problems = Problems(broken);
        ASSERT_THAT(problems, SizeIs(1)) << broken;
        EXPECT_THAT(problems[0], HasSubstr("line 1, column "));
        EXPECT_TRUE(std::all_of(problems[0].begin(), problems[0].end(), [](char byte) {
            return byte >= ' ' && byte <= '~';
        })) << problems[0];
    }
}

}  // namespace
