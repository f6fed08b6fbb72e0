#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "support/gltf_scene.h"
#include "support/source_tree.h"

namespace {

using namespace standalone;
using namespace support;
using testing::HasSubstr;
using testing::StartsWith;

// A triangle with its own indices, two nodes, a skin, a clip, and the members that the tests break.
eGltfText Good() {
    eGltfText file;
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});
    file.Bytes("SCALAR", {0, 1, 2});
    file.Floats("SCALAR", {0, 1});
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0});
    file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": 0}, "indices": 1}]}])");
    file.Section("nodes", R"([{"mesh": 0, "children": [1]}, {"name": "below"}])");
    file.Section("animations", R"([{"channels": [{"sampler": 0, "target": {"node": 0, "path": "scale"}}],
        "samplers": [{"input": 2, "output": 3}]}])");
    return file;
}

// The problems of the good file with one piece of its text exchanged.
std::string Broken(const std::string& piece, const std::string& with) {
    std::string text = Good().Text();
    const std::size_t place = text.find(piece);
    EXPECT_NE(place, std::string::npos) << piece;
    text.replace(place, piece.size(), with);
    const eLoadResult result = Import(text);
    EXPECT_FALSE(result.scene) << with;
    return ProblemsOf(result);
}

// Would catch a fault of the file's form that is passed over, or told without its place and reason, and sizes
// that are believed before they are held against the file. In the text file stand a piece of the good file,
// what takes its place, and what it must tell: to the end, or to a star.
TEST(GltfBadInput, FormIsToldWithPlaceAndReason) {
    EXPECT_EQ(ProblemsOf(Import(Good().Text())), "");
    std::ifstream file(SourceTree() / "tests/standalone/gltf_bad_input.txt");
    std::string piece, with, told;
    int faults = 0;
    for (; std::getline(file, piece) && std::getline(file, with) && std::getline(file, told); ++faults) {
        told = told.ends_with('*') ? told.substr(1, told.size() - 2) : told.substr(1) + "\n";
        EXPECT_EQ(Broken(piece, with).substr(0, told.size()), told);
    }
    EXPECT_EQ(faults, 22);
    EXPECT_THAT(Broken(R"("nodes":)", R"("cameras": [{"type": "perspective"}, {"type": "round"}], "nodes":)"),
                HasSubstr("/cameras/1/type: the word is not known"));
    EXPECT_THAT(Broken(R"({"name": "below"})", std::string(300, '[').append(300, ']')),
                HasSubstr("nested too deeply"));
}

// Would catch a walk that never ends, runs out of stack, or shows a node twice.
TEST(GltfBadInput, NodesMustBeATree) {
    const auto nodes = [](const std::string& list, const std::string& scenes) {
        eGltfText file;
        file.Section("nodes", list);
        if (!scenes.empty()) {
            file.Section("scenes", scenes);
        }
        return ProblemsOf(Import(file.Text()));
    };
    EXPECT_EQ(nodes(R"([{}, {"children": [2]}, {"children": [1]}])", R"([{"nodes": [1]}])"),
              "/nodes/1: the node is its own ancestor, or a descendant of one\n"
              "/scenes/0/nodes: node 1 is a child of another node\n");
    EXPECT_EQ(nodes(R"([{"children": [0]}])", ""),
              "/nodes/0: the node is its own ancestor, or a descendant of one\n");
    EXPECT_EQ(nodes(R"([{"children": [2]}, {"children": [2]}, {}])", ""),
              "/nodes/1/children: node 2 is a child of node 0 already\n");
    EXPECT_EQ(nodes(R"([{}])", R"([{"nodes": [0, 0]}])"),
              "/scenes/0/nodes: node 0 stands twice in the list\n");
    std::string chain = "[";
    for (int i = 0; i < 2000; ++i) {
        chain += "{\"children\": [" + std::to_string(i + 1) + "]}, ";
    }
    EXPECT_EQ(nodes(chain + "{}]", ""), "/nodes/2000: the node lies more than 2000 levels deep\n");
}

// Would catch a fault without its code, at the wrong node, or one that a Russian artist can't read; and a way
// up through the nodes that never ends.
TEST(GltfBadInput, FaultsOfNodesNameThem) {
    eGltfText file;
    file.Section("nodes", R"([{"name": "tank", "children": [1]}, {"children": [2]},
                              {"name": "gun", "rotation": [0, 0, 0, 0]}])");
    const eLoadResult result = Import(file.Text());
    ASSERT_EQ(result.problems.size(), 1U);
    EXPECT_STREQ(RowOf(result.problems[0].id).code, "gltf.rotation");
    EXPECT_EQ(result.problems[0].node, "tank/node_1/gun");
    EXPECT_EQ(result.problems[0].Line().russian, "/nodes/2/rotation: поворот имеет длину 0");
    eGltfText ring;
    ring.Section("nodes", R"([{"children": [0], "name": "ring"}])");
    EXPECT_EQ(Import(ring.Text()).problems.at(0).node, "ring");
}

// Would catch geometry that reads vertices it does not have, or numbers that are none.
TEST(GltfBadInput, GeometryMustFitItself) {
    const auto problems = [](const std::vector<float>& positions, const std::vector<std::uint8_t>& indices,
                             const std::string& more) {
        eGltfText file;
        file.Floats("VEC3", positions);
        file.Bytes("SCALAR", indices);
        file.Floats("VEC3", {0, 0, 0});
        file.Section("meshes",
                     "[{\"primitives\": [{\"attributes\": {\"POSITION\": 0" + more + "}, \"indices\": 1}]}]");
        file.Section("nodes", R"([{"mesh": 0}])");
        return ProblemsOf(Import(file.Text()));
    };
    const std::vector<float> three = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    EXPECT_EQ(problems(three, {0, 1, 3}, ""),
              "/meshes/0/primitives/0/indices: index 3 at position 2 lies beyond the 3 vertices\n");
    EXPECT_EQ(problems({0, 0, 0, 1, 0, 0, 0, std::nanf(""), 0}, {0, 1, 2}, ""),
              "/meshes/0/primitives/0: element 2 of accessor 0 is no number\n");
    EXPECT_EQ(problems(three, {0, 1, 2}, R"(, "NORMAL": 2)"),
              "/meshes/0/primitives/0: accessor 2 has 1 element for 3 vertices\n");
    EXPECT_EQ(problems(three, {0, 1, 2}, R"(, "TEXCOORD_0": 0)"),
              "/meshes/0/primitives/0: accessor 0 has 3 numbers per element, and 2 are expected\n");
}

std::string PokedAt(std::string bytes, std::size_t offset, char value) {
    bytes[offset] = value;
    return bytes;
}

// Would catch lengths of chunks that reach beyond the file, and a buffer taken from where there is none.
TEST(GltfBadInput, TheBinaryFrameIsChecked) {
    const std::string whole = Good().Binary();
    EXPECT_EQ(ProblemsOf(Import(PokedAt(whole, 4, 1))),
              "byte 4: version 1 of the binary form is not known, only version 2\n");
    EXPECT_THAT(ProblemsOf(Import(PokedAt(whole, 11, 1))), StartsWith("byte 8: the file tells "));
    EXPECT_THAT(ProblemsOf(Import(PokedAt(whole, 15, 1))), StartsWith("byte 12: the chunk tells "));
    EXPECT_EQ(ProblemsOf(Import(PokedAt(whole, 16, 'j'))), "byte 12: the first chunk is not of type JSON\n");
    EXPECT_THAT(ProblemsOf(Import(PokedAt(whole, whole.find(std::string("BIN\0", 4)), 'b'))),
                StartsWith("/buffers/0: the buffer holds 0 bytes, and tells "));
    EXPECT_THAT(ProblemsOf(Import(
                    BinaryGltf(R"({"asset": {"version": "2.0"}, "buffers": [{"byteLength": 8}]})", "1234"))),
                StartsWith("/buffers/0: the buffer holds 4 bytes, and tells 8"));
    EXPECT_EQ(ProblemsOf(Import(R"({"asset": {"version": "2.0"}, "buffers": [{"byteLength": 4}]})")),
              "/buffers/0: \"uri\" is missing, and only the first buffer of a binary file may lack it\n");
    EXPECT_EQ(ProblemsOf(Import(
                  R"({"asset": {"version": "2.0"}, "buffers": [{"byteLength": 4, "uri": "data:,abcd"}]})")),
              "/buffers/0: the data URI is not in base 64\n");
    EXPECT_TRUE(Import(BinaryGltf(R"({"asset": {"version": "2.0"}})", "")).scene);
}

}  // namespace
