#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standalone/loaders/scene_document/scene_document_reader.h"

namespace {

using namespace standalone;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

std::vector<std::string> Problems(std::string_view text) {
    const eLoadResult result = ReadSceneDocument(text, "/a.scene.json");
    EXPECT_EQ(result.scene.has_value(), result.problems.empty());
    std::vector<std::string> lines;
    for (const eProblem& problem : result.problems) {
        lines.push_back(problem.place + ": " + problem.text);
    }
    return lines;
}

// What a fault in one place of a document must tell.
struct eFault {
    const char* text;
    const char* place;
    const char* words;
};

// Each text stands at the @ of the frame; the place is taken from there.
void ExpectFaults(const std::string& frame, const std::string& framePlace,
                  std::initializer_list<eFault> faults) {
    const std::size_t gap = frame.find('@');
    for (const eFault& fault : faults) {
        std::string text = frame;
        text.replace(gap, 1, fault.text);
        EXPECT_THAT(Problems(text),
                    ElementsAre(testing::AllOf(testing::StartsWith(framePlace + fault.place + ": "),
                                               HasSubstr(fault.words))))
            << text;
    }
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

// Would catch a setting or section that takes anything.
TEST(SceneDocumentErrors, AtTheTop) {
    EXPECT_THAT(Problems("[]"), ElementsAre("/: expected an object, found a list"));
    EXPECT_THAT(Problems("{}"), ElementsAre("/: the key \"scene\" is missing"));
    EXPECT_THAT(Problems(R"({"scene": 2, "brandNew": 1})"), ElementsAre(HasSubstr("version 2")));
    ExpectFaults(R"({"scene": 1, @})", "",
                 {
                     {R"("range": [0, 0.5])", "/range/1", "whole number"},
                     {R"("range": [0, 1, 2])", "/range", "a list of 2"},
                     {R"("range": [5, 4])", "/range", "behind the last"},
                     {R"("range": [0, 1000000000])", "/range", "too far"},
                     {R"("frameTicks": 0)", "/frameTicks", "1 to 2147483647"},
                     {R"("frameTicks": 2000000000)", "/", "too far away"},
                     {R"("ambient": [0, 0, 1.5])", "/ambient", "0 to 1"},
                     {R"("ambient": [0, 0])", "/ambient", "a list of 3, found 2 entries"},
                     {R"("file": null)", "/file", "expected a string, found null"},
                     {R"("nodes": {})", "/nodes", "expected a list, found an object"},
                     {R"("nodes": [1])", "/nodes/0", "expected an object, found a number"},
                     {R"("objects": [])", "/objects", "expected an object"},
                     {R"("objects": {"": {"type": "helper"}})", "/objects/", "must not be empty"},
                     {R"("materials": {"木": {"type": "standard"}})", "/materials/木", "U+6728"},
                     {R"("selectionSets": [{"name": "a"}])", "/selectionSets/0", "\"nodes\" is missing"},
                 });
}

// Would catch a node's key that takes anything, or tells its fault at the wrong place.
TEST(SceneDocumentErrors, InNodes) {
    ExpectFaults(R"({"scene": 1, "nodes": [{"name": "a", @}]})", "/nodes/0",
                 {
                     {R"("properties": ["a", 1])", "/properties/1", "expected a string, found a number"},
                     {R"("properties": ["ok", "日"])", "/properties/1", "U+65E5 at byte 0"},
                     {R"("properties": "кот 😀")", "/properties", "U+1F600 at byte 7"},
                     {R"("properties": "a\u0000b")", "/properties", "U+0000"},
                     {R"("group": "leader")", "/group", "expected one of \"head\", \"member\""},
                     {R"("group": ["head", "head"])", "/group/1", "twice"},
                     {R"("jointFlags": [0, 32])", "/jointFlags/1", "0 to 31"},
                     {R"("jointFlags": 5)", "/jointFlags", "expected a list"},
                     {R"("visibility": "on")", "/visibility", "[frame, value]"},
                     {R"("visibility": [[0, 1], [1]])", "/visibility/1", "a list of 2"},
                     {R"("target": "nobody")", "/target", "no node with the name \"nobody\""},
                     {R"("material": "none")", "/material", "no material with the id \"none\""},
                     {R"("material": null)", "/material", "expected a string, found null"},
                     {R"("object": 5)", "/object", "or the id of an object"},
                     {R"("children": {})", "/children", "expected a list"},
                     {R"("transform": {"position": [0, 0, 1e39]})", "/transform/position/2", "too large"},
                     {R"("transform": {"position": [0, 0, 123456789012345678901234567890123456789012]})",
                      "/transform/position/2", "too large"},
                     {R"("transform": {"rotation": [0, 0, 0, 0]})", "/transform/rotation", "length 0"},
                     {R"("transform": {"rotation": [0, 0, 1]})", "/transform/rotation", "a list of 4"},
                     {R"("transform": {"matrix": [1, 0, 0]})", "/transform/matrix", "a list of 12"},
                     {R"("transform": {"matrix": [1,0,0,0,1,0,0,0,1,0,0,0], "scale": [1, 1, 1]})",
                      "/transform", "no other key may stand beside \"matrix\""},
                     {R"("keys": [{"position": [0, 0, 0]}])", "/keys/0", "\"frame\" is missing"},
                     {R"("transform": {"matrix": [1,0,0,0,1,0,0,0,1,0,0,0]}, "keys": [{"frame": 0},
                         {"frame": 1, "rotation": [0, 0, 0, 1]}])",
                      "/keys/1", "only position keys"},
                     {R"("offset": {"matrix": []})", "/offset/matrix", "unknown key"},
                 });
}

// Would catch an object that reaches the host half filled or beyond its limits.
TEST(SceneDocumentErrors, InObjects) {
    ExpectFaults(
        R"({"scene": 1, "nodes": [{"name": "a", "object": {@}}]})", "/nodes/0/object",
        {
            {R"("radius": 1)", "", "\"type\" is missing"},
            {R"("type": 1, "radius": 1)", "/type", "expected a string"},
            {R"("type": "cone", "radius": 1)", "/type", "unknown word \"cone\""},
            {R"("type": "helper", "width": 1)", "/width", "unknown key"},
            {R"("type": "sphere")", "", "\"radius\" is missing"},
            {R"("type": "sphere", "radius": 1, "segments": 10)", "/segments", "multiple of 4"},
            {R"("type": "sphere", "radius": 1, "segments": 4)", "/segments", "8 to 1024"},
            {R"("type": "sphere", "radius": 1, "segments": 1e9)", "/segments", "8 to 1024"},
            {R"("type": "cylinder", "radius": 1, "height": 1, "sides": 2)", "/sides", "3 to 4096"},
            {R"("type": "line", "splines": [{"closed": true}])", "/splines/0", "\"points\" is missing"},
            {R"("type": "camera", "fov": 180)", "/fov", "below 180"},
            {R"("type": "light")", "", "\"kind\" is missing"},
            {R"("type": "light", "kind": "area")", "/kind", "\"omni\", \"spot\""},
            {R"("type": "light", "kind": "omni", "attenuation": {"start": 1})", "/attenuation",
             "\"end\" is missing"},
            {R"("type": "light", "kind": "omni", "exclude": [], "include": [])", "", "together"},
            {R"("type": "light", "kind": "omni", "exclude": ["b"])", "/exclude/0", "no node"},
            {R"("type": "other", "superClass": 4294967296, "classId": [0, 0])", "/superClass",
             "0 to 4294967295"},
            {R"("type": "other", "superClass": 1, "classId": [0, -1])", "/classId/1", "0 to"},
            {R"("type": "helper", "modifiers": [{"type": "bend"}])", "/modifiers/0/type", "\"skin\""},
            {R"("type": "helper", "modifiers": [{"type": "skin", "bones": ["x"], "weights": []}])",
             "/modifiers/0/bones/0", "no node"},
            {R"("type": "helper", "modifiers": [{"type": "skin", "bones": ["a"], "weights": [[[1, 1]]]}])",
             "/modifiers/0/weights/0/0/0", "outside its table of 1 entries"},
            {R"("type": "mesh", "vertices": [[0, 0, 0]], "faces": [],
                         "modifiers": [{"type": "skin", "bones": [], "weights": [[], []]}])",
             "/modifiers/0/weights", "a list of 1"},
            {R"("type": "helper", "modifiers": [{"type": "skin", "bones": ["a"], "weights": [],
                         "bindFrame": -1e20}])",
             "/modifiers/0/bindFrame", "too far away"},
            {R"("type": "helper", "modifiers": [{"type": "skin", "bones": ["a"], "weights": [],
                         "bindMatrices": []}])",
             "/modifiers/0/bindMatrices", "a list of 1"},
        });
}

// Would catch an index beyond its table, which the host would follow, and tables of the wrong length.
TEST(SceneDocumentErrors, InMeshes) {
    ExpectFaults(R"({"scene": 1, "objects": {"o": {"type": "mesh", @}}})", "/objects/o",
                 {
                     {R"("vertices": [])", "", "\"faces\" is missing"},
                     {R"("vertices": [[0, 0, 0], [0, 0]], "faces": [])", "/vertices/1", "a list of 3"},
                     {R"("vertices": [[0, 0, 0]], "faces": [[0, 0, 0], [0, 1, 0]])", "/faces/1/1",
                      "outside its table of 1 entries"},
                     {R"("vertices": [[0, 0, 0]], "faces": [[0, 0, -1]])", "/faces/0/2", "outside"},
                     {R"("vertices": [[0, 0, 0]], "faces": [[0, 0, 0.5]])", "/faces/0/2", "whole number"},
                 });
    ExpectFaults(
        R"({"scene": 1, "objects": {"o": {"type": "mesh", "vertices": [[0, 0, 0]], "faces": [[0, 0, 0]],
                     @}}})",
        "/objects/o",
        {
            {R"("smoothing": [1, 2])", "/smoothing", "a list of 1, found 2"},
            {R"("smoothing": -1)", "/smoothing", "0 to 4294967295"},
            {R"("materialIds": [65536])", "/materialIds/0", "0 to 65535"},
            {R"("hiddenFaces": [1])", "/hiddenFaces/0", "outside"},
            {R"("maps": {"01": {"vertices": [], "faces": []}})", "/maps/01", "map channel"},
            {R"("maps": {"100": {"vertices": [], "faces": []}})", "/maps/100", "\"-2\" to \"99\""},
            {R"("maps": {"1": {"vertices": [], "faces": []}})", "/maps/1/faces", "a list of 1"},
            {R"("maps": {"1": {"vertices": [], "faces": [[0, 1]]}})", "/maps/1/faces/0", "a list of 3"},
            {R"("maps": {"1": {"vertices": [[0, 0, 0]], "faces": [[0, 0, 1]]}})", "/maps/1/faces/0/2",
             "outside"},
            {R"("maps": {"-2": {"vertices": [[0, 0, 0]], "faces": [[0, 0, -1]]}})", "/maps/-2/faces/0/2",
             "outside"},
            {R"("normals": {"vectors": [[0, 0, 1]], "faces": [[0, -1, 1]]})", "/normals/faces/0/2",
             "outside"},
            {R"("normals": {"vectors": [], "faces": [[-1, -1, -1]], "explicit": [0]})", "/normals/explicit/0",
             "outside"},
            {R"("normals": {"vectors": [], "faces": []})", "/normals/faces", "a list of 1"},
            {R"("vertexKeys": [{"frame": 0, "vertices": []}])", "/vertexKeys/0/vertices", "a list of 1"},
        });
}

// Would catch a material that the host can't walk to an end, and maps in no slot.
TEST(SceneDocumentErrors, InMaterials) {
    ExpectFaults(
        R"({"scene": 1, "materials": {"m": {@}}})", "/materials/m",
        {
            {R"("type": "standard", "shininess": 2)", "/shininess", "0 to 1"},
            {R"("type": "standard", "maps": {"shine": {"map": {"type": "vertexColor"}}})", "/maps/shine",
             "unknown key"},
            {R"("type": "standard", "maps": {"bump": {"amount": 1}})", "/maps/bump", "\"map\" is missing"},
            {R"("type": "standard", "maps": {"bump": {"map": {"type": "noise"}}})", "/maps/bump/map/type",
             "\"bitmap\""},
            {R"("type": "multi", "materials": ["x"])", "/materials/0", "no material"},
            {R"("type": "multi")", "", "\"materials\" is missing"},
            {R"("type": "twoLayer", "materials": [null])", "/materials", "a list of 2"},
            {R"("type": "multi", "materials": ["m"])", "", "holds itself"},
            {R"("type": "sorrel", "material": "m")", "", "holds itself"},
            {R"("type": "sorrel", "blend": 0.5)", "/blend", "whole number"},
            {R"("type": "sorrel", "mask": {"type": "mix", "maps": [null, null, null, null]})", "/mask/maps",
             "at most 3"},
            {R"("type": "sorrel", "mask": {"type": "mix", "amount": 2})", "/mask/amount", "0 to 1"},
            {R"("type": "sorrel", "mask": {"type": "checker", "colors": [[0, 0, 0]]})", "/mask/colors",
             "a list of 2"},
            {R"("type": "sorrel", "mask": {"type": "vertexColor", "uv": {"source": 4}})", "/mask/uv/source",
             "0 to 3"},
            {R"("type": "sorrel", "mask": {"type": "bitmap", "crop": [0, 0, 1]})", "/mask/crop",
             "a list of 4"},
        });
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
