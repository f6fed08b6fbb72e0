#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "support/gltf_scene.h"

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

// Would catch a fault of the file's form that is passed over, or told without its place and reason.
TEST(GltfBadInput, FormIsToldWithPlaceAndReason) {
    EXPECT_EQ(ProblemsOf(Import(Good().Text())), "");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("mesh": 7)"),
              "/nodes/0/mesh: there is no entry 7 among the 1 meshes\n");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("mesh": -1)"),
              "/nodes/0/mesh: there is no entry -1 among the 1 meshes\n");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("mesh": 0.0)"),
              "/nodes/0/mesh: a whole number is expected, written without a fraction\n");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("mesh": "0")"),
              "/nodes/0/mesh: a whole number is expected, written without a fraction\n");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("scale": [1, 2])"),
              "/nodes/0/scale: 3 entries are expected, not 2\n");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("scale": [1, 2, null])"), "/nodes/0/scale/2: a number is expected\n");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("scale": [1, 2, 1e300])"),
              "/nodes/0/scale/2: the number is too large\n");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("rotation": [0, 0, 0, 0])"),
              "/nodes/0/rotation: the rotation has the length 0\n");
    EXPECT_EQ(Broken(R"("POSITION": 0)", R"("POSITION": 0, "NORMAL": 9)"),
              "/meshes/0/primitives/0/attributes/NORMAL: there is no entry 9 among the 4 accessors\n");
    EXPECT_EQ(Broken(R"("mesh": 0)", R"("mesh": 0, "mesh": 0)"),
              "/nodes/0/mesh: the member stands twice in its object\n");
    EXPECT_EQ(Broken(R"("sampler": 0)", R"("sampler": 1)"),
              "/animations/0/channels/0: there is no entry 1 among the 1 samplers\n");
    EXPECT_EQ(Broken(R"("version": "2.0")", R"("version": "1.0")"),
              "/asset: version 1.0 of the format is not known, only 2.0\n");
    EXPECT_EQ(Broken(R"("nodes":)", R"("extensionsRequired": ["KHR_draco_mesh_compression"], "nodes":)"),
              "/extensionsRequired/0: the file can't be read without the extension "
              "KHR_draco_mesh_compression, which "
              "is not known\n");
    EXPECT_EQ(Broken(R"("nodes":)", R"("images": [{"name": "x"}], "nodes":)"),
              "/images/0: either \"uri\" or \"bufferView\" is expected\n");
    EXPECT_THAT(Broken(R"("nodes":)", R"("cameras": [{"type": "perspective"}, {"type": "round"}], "nodes":)"),
                HasSubstr("/cameras/1/type: the word is not known"));
    EXPECT_THAT(Broken(R"({"name": "below"})", std::string(300, '[') + std::string(300, ']')),
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

// Would catch reads beyond a buffer, and sizes that are believed before they are held against the file.
TEST(GltfBadInput, NumbersMustLieInTheirBuffers) {
    EXPECT_EQ(Broken(R"("count": 3, "type": "VEC3")", R"("count": 4, "type": "VEC3")"),
              "/accessors/0: 4 elements from byte 0 on lie beyond the 36 bytes of the buffer view\n");
    EXPECT_THAT(Broken(R"("count": 3, "type": "VEC3")", R"("count": 9000000000000000000, "type": "VEC3")"),
                StartsWith("/accessors/0: "));
    EXPECT_EQ(Broken(R"({"bufferView": 0, "componentType": 5126, "count": 3)",
                     R"({"componentType": 5126, "count": 4000000000)"),
              "/accessors/0: more elements are told than the file can hold\n");
    EXPECT_THAT(Broken(R"("byteLength": 36})", R"("byteLength": 9223372036854775807})"),
                StartsWith("/bufferViews/0: 9223372036854775807 bytes from byte 0 on lie beyond"));
    EXPECT_THAT(Broken(R"("byteLength": 36})", R"("byteLength": 36, "byteStride": 5})"),
                StartsWith("/bufferViews/0: the stride"));
    EXPECT_EQ(Broken(R"("byteLength": 36})", R"("byteLength": 36, "byteStride": 8})"),
              "/accessors/0: the stride of the buffer view is less than an element\n");
    EXPECT_EQ(Broken(R"("count": 3, "type": "SCALAR")",
                     R"("count": 3, "type": "SCALAR", "sparse": {"count": 3, "indices": {"bufferView": 1,
                     "componentType": 5125}, "values": {"bufferView": 1}})"),
              "/accessors/1/sparse/indices: the indices lie beyond their buffer view\n");
    EXPECT_THAT(Broken(R"("count": 3, "type": "SCALAR")",
                       R"("count": 3, "type": "SCALAR", "sparse": {"count": 2, "indices": {"bufferView": 0,
                       "componentType": 5121}, "values": {"bufferView": 1}})"),
                StartsWith("/accessors/1/sparse/indices: index 0 at position 1"));
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
              "/meshes/0/primitives/0: accessor 2 has 1 elements for 3 vertices\n");
    EXPECT_EQ(problems(three, {0, 1, 2}, R"(, "TEXCOORD_0": 0)"),
              "/meshes/0/primitives/0: accessor 0 has 3 numbers per element, and 2 are expected\n");
}

// Would catch a binary frame that is believed: at each fiftieth of its length the file breaks off.
TEST(GltfBadInput, TruncatedFilesAreRefused) {
    const std::string whole = Good().Binary();
    EXPECT_EQ(ProblemsOf(Import(whole)), "");
    for (std::size_t i = 0; i < 50; ++i) {
        const eLoadResult result = Import(whole.substr(0, whole.size() * i / 50));
        EXPECT_FALSE(result.scene) << i;
        EXPECT_FALSE(result.problems.empty()) << i;
    }
    const std::string text = Good().Text();
    for (std::size_t i = 0; i < 50; ++i) {
        EXPECT_FALSE(Import(text.substr(0, text.size() * i / 50)).scene) << i;
    }
    EXPECT_THAT(ProblemsOf(Import(text.substr(0, 40))), HasSubstr("line 1, column 41"));
    // Bytes behind the told length, and chunks that nobody knows, do no harm.
    EXPECT_EQ(ProblemsOf(Import(whole + "tail")), "");
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
