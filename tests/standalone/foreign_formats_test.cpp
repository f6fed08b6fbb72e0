// Scenes in the formats that the import library reads, from small files that a script beside them has made.
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/ansi.h"
#include "platform/trial.h"
#include "standalone/data/world_matrices.h"
#include "standalone/loaders/assimp/studio_names.h"
#include "standalone/loaders/fbx/fbx_arrays.h"
#include "standalone/loaders/fbx/fbx_binary.h"
#include "standalone/loaders/load_scene.h"
#include "support/gltf_scene.h"
#include "support/source_tree.h"
#include "support/temp_folder.h"

namespace standalone {
namespace {

using host::Point3;
using support::SourceTree;

std::filesystem::path SmallFile(const std::string& extension) {
    return SourceTree() / "tests/standalone/foreign" / ("small." + extension);
}

std::string ContentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Words(const eLoadResult& result) {
    std::string words;
    for (const auto* list : {&result.problems, &result.warnings}) {
        for (const eLoadMessage& message : *list) {
            words += message.Line().english + "\n";
        }
    }
    return words;
}

// A scene and where its things are in the world, in metres.
class eLoaded {
public:
    explicit eLoaded(const eLoadResult& result) : scene(result.scene.value_or(eSceneData{})), world(scene) {}

    const eNodeData& Node(const std::string& name) { return scene.nodes[Number(name)]; }
    const host::Mesh& Mesh(const std::string& name) {
        return std::get<eMeshObject>(scene.objects[static_cast<std::size_t>(Node(name).object)].kind).mesh;
    }
    Point3 CornerAt(const std::string& name, std::size_t face, int corner, int frame) {
        const host::Mesh& mesh = Mesh(name);
        return mesh.verts[mesh.faces[face].v[corner]] *
               world.At(static_cast<int>(Number(name)), frame * scene.frameTicks);
    }

    eSceneData scene;

private:
    std::size_t Number(const std::string& name) {
        for (std::size_t node = 0; node < scene.nodes.size(); ++node) {
            if (scene.nodes[node].name == name) {
                return node;
            }
        }
        ADD_FAILURE() << "no node " << name;
        return 0;
    }

    eWorldMatrices world;
};

void ExpectNear(const Point3& found, const Point3& expected, const std::string& what) {
    EXPECT_TRUE(found.Equals(expected, 1e-5F)) << what << ": " << found.x << " " << found.y << " " << found.z;
}

// Would catch properties out of order, lost, or with broken letters; a pivot, an offset, a unit, an axis or a
// mirror that is not folded in; a polygon cut wrong; takes on top of one another or at the wrong rate.
TEST(ForeignFormats, FbxSaysAllThatTheArtistBuilt) {
    const eLoadResult result = LoadScene(SmallFile("fbx").string());
    ASSERT_TRUE(result.scene) << Words(result);
    eLoaded loaded(result);

    // The takes are declared behind what the artist wrote.
    EXPECT_EQ(loaded.Node("arm").properties,
              std::string("Model = tests/arm\r\nHold=claw\r\ncrew=4\r\narmour=0.5\r\nКисть=правая\r\n"
                          "animation=swing,swing,10-20\r\nanimation=grab,grab,22-26\r\n"
                          "animation=blink,blink,28-34"_ansi));
    EXPECT_EQ(loaded.Node("claw").properties,
              "Poly\r\nGround\r\nTags=left, low\r\nTags=it's\r\nTags=c:\\d\r\nMax=0,45.5\r\nOdd=['a', 1]");
    EXPECT_NE(Words(result).find("arm/Hold"), std::string::npos) << Words(result);
    EXPECT_NE(Words(result).find("other materials, and may have got those; make the mesh unique: twin\n"),
              std::string::npos)
        << Words(result);

    // 24 frames a second; the second take stands behind the first.
    EXPECT_EQ(loaded.scene.firstFrame, 10);
    EXPECT_EQ(loaded.scene.lastFrame, 34);
    ASSERT_EQ(loaded.scene.selectionSets.size(), 3U);
    EXPECT_EQ(loaded.scene.selectionSets[1].name, "grab");

    // The point (20, 0, 0), lifted by 5, turned about the pivot (10, 0), lifted by 100 centimetres.
    const auto turned = [](double degrees) {
        const double angle = degrees * 3.14159265358979 / 180;
        return Point3{static_cast<float>(0.1 + 0.1 * std::cos(angle)),
                      static_cast<float>(0.1 * std::sin(angle)), 1.05F};
    };
    const std::map<int, double> degrees = {{10, 90}, {15, 135}, {20, 180}, {22, 90}, {24, 70}, {26, 50}};
    ASSERT_EQ(loaded.Mesh("claw").getNumFaces(), 4);
    for (const auto& [frame, angle] : degrees) {
        ExpectNear(loaded.CornerAt("claw", 3, 1, frame), turned(angle), "frame " + std::to_string(frame));
    }
    ExpectNear(loaded.CornerAt("twin", 3, 1, 0), {-0.2F, 0.5F, 0.05F}, "the mirrored twin");
    EXPECT_EQ(loaded.Node("claw").object, loaded.Node("twin").object);
}

// Would catch a curve of visibility that is lost, late, in another take or at another node, one that stops at
// the node, a take of nothing else that is left out, and motions of nodes of one name that get mixed up.
TEST(ForeignFormats, FbxHidesAndMovesTheRightNodes) {
    const eLoadResult result = LoadScene(SmallFile("fbx").string());
    ASSERT_TRUE(result.scene) << Words(result);
    eLoaded loaded(result);
    EXPECT_EQ(support::VisibilityOf(loaded.Node("arm")), "1 10+ 24- 26+");
    EXPECT_EQ(support::VisibilityOf(loaded.Node("claw")), "1 10+ 24- 26+ 31-");
    EXPECT_EQ(support::VisibilityOf(loaded.Node("twin")), "1");
    std::map<std::string, std::pair<float, float>>
        bolts;  // by the node above: where they end, and are bolted
    for (const eNodeData& node : loaded.scene.nodes) {
        if (node.name == "bolt") {
            const eNodeData& above = loaded.scene.nodes[static_cast<std::size_t>(node.parent)];
            bolts[above.name] = {node.keys.at(10).position.value_or(Point3{}).x,
                                 node.transform.parts.position.x};
        }
    }
    EXPECT_EQ(bolts, (decltype(bolts){{"arm", {0.03F, 0.01F}}, {"claw", {0.06F, 0.02F}}}));
    EXPECT_EQ(Words(result).find("one name"), std::string::npos) << Words(result);
}

// Would catch numbers that are packed or separated in a way that the reader doesn't know, and memory for what
// an array only claims.
TEST(ForeignFormats, FbxArraysAreTakenApart) {
    using eNumbers = std::vector<double>;
    EXPECT_EQ(NumbersOf({" a: 1,-2.5,\n3e2 "}), (eNumbers{1, -2.5, 300}));
    EXPECT_EQ(NumbersOf({std::string_view("\0\0\x80\x3F", 4), 'f', 1}), eNumbers{1});
    const std::string_view packed("\x78\xDA\x63\x65\x80\x80\x9F\xFF\x21\x00\x00\x24\x0C\x07\xF8", 15);
    EXPECT_EQ(NumbersOf({packed, 'l', 2, true}), (eNumbers{5, -7}));
    EXPECT_EQ(NumbersOf({packed, 'l', 3, true}), eNumbers());
    EXPECT_EQ(NumbersOf({packed, 'l', 4000000000, true}), eNumbers());
}

// Would catch corners that are not welded, channels or colours that are lost or swapped, materials of faces
// mixed up, and a picture of another machine that is not sought.
TEST(ForeignFormats, FbxKeepsSurfacesAndFindsPictures) {
    const support::eTempFolder folder;
    folder.MakeFolder("art");
    const std::string scene = folder / "small.fbx";
    std::filesystem::copy_file(SmallFile("fbx"), scene);
    const eLoadResult lost = LoadScene(scene);
    EXPECT_NE(Words(lost).find("wood: ..\\maps\\wood.bmp (looked for "), std::string::npos);
    EXPECT_EQ(std::get<eBitmapMap>(lost.scene.value().maps.at(0).kind).tried,
              (std::vector{folder / "../maps/wood.bmp", folder / "wood.bmp"}));
    std::ofstream(folder / "art/wood.bmp") << "BM";
    const eLoadResult result = LoadScene(scene, {{}, {}, {folder / "art"}});
    ASSERT_TRUE(result.scene) << Words(result);
    eLoaded loaded(result);

    const host::Mesh& mesh = loaded.Mesh("claw");
    EXPECT_EQ(mesh.getNumVerts(), 6);
    EXPECT_TRUE(mesh.mapSupport(1) && mesh.mapSupport(2) && mesh.mapSupport(host::Mesh::kVertexColorChannel));
    const auto uv = [&](int channel) { return mesh.mapVerts(channel)[mesh.mapFaces(channel)[3].t[1]]; };
    ExpectNear(uv(1), {0.2F, 0, 0}, "first channel");
    ExpectNear(uv(2), {2, 0, 0}, "second channel");
    ExpectNear(mesh.vertCol()[mesh.vcFace()[3].t[2]], {0.5F, 0, 0}, "colour");
    ASSERT_TRUE(mesh.specifiedNormals);
    ExpectNear(mesh.specifiedNormals->GetNormal(0, 0), {0, 0, 1}, "normal of the ground");
    ExpectNear(mesh.specifiedNormals->GetNormal(3, 0), {0, -1, 0}, "normal of the upright");
    EXPECT_EQ(mesh.faces[0].getMatID(), 0);
    EXPECT_EQ(mesh.faces[3].getMatID(), 1);

    const auto& multi = std::get<eMultiMaterial>(
        loaded.scene.materials[static_cast<std::size_t>(loaded.Node("claw").material)].kind);
    const auto standard = [&](std::size_t slot) {
        return std::get<eStandardMaterial>(
            loaded.scene.materials[static_cast<std::size_t>(multi.materials[slot])].kind);
    };
    EXPECT_EQ(standard(0).diffuse, (host::Color{0.5F, 0.25F, 0.125F}));
    EXPECT_FLOAT_EQ(standard(1).opacity, 0.25F);
    ASSERT_EQ(standard(0).maps[1].map, 0);
    EXPECT_EQ(std::get<eBitmapMap>(loaded.scene.maps[0].kind).file, "art/wood.bmp");
}

// Would catch a unit or an axis that is taken wrong: z up and centimetres, y up and metres, z up and metres.
TEST(ForeignFormats, TheSameTriangleComesOutOfEveryFormat) {
    for (const char* extension : {"dae", "obj", "3ds"}) {
        const eLoadResult result = LoadScene(SmallFile(extension).string());
        ASSERT_TRUE(result.scene) << extension << " " << Words(result);
        eLoaded loaded(result);
        ASSERT_EQ(loaded.Mesh("claw").getNumFaces(), 1) << extension;
        ExpectNear(loaded.CornerAt("claw", 0, 0, 0), {0, 0, 1}, extension);
        ExpectNear(loaded.CornerAt("claw", 0, 1, 0), {0.2F, 0, 1}, extension);
        ExpectNear(loaded.CornerAt("claw", 0, 2, 0), {0, 0, 1.3F}, extension);
    }
    eLoaded wavefront(LoadScene(SmallFile("obj").string()));
    ASSERT_EQ(wavefront.scene.materials.size(), 1U);
    EXPECT_EQ(std::get<eStandardMaterial>(wavefront.scene.materials[0].kind).diffuse,
              (host::Color{0.5F, 0.25F, 0.125F}));
    // The third object has the name of the first.
    ASSERT_EQ(wavefront.scene.objects.size(), 3U);
    EXPECT_EQ(wavefront.Mesh("peg").getNumFaces(), 1);
    EXPECT_EQ(std::get<eMeshObject>(wavefront.scene.objects[2].kind).mesh.getNumFaces(), 2);
    EXPECT_EQ(wavefront.scene.nodes.back().name, "claw");
}

// Would catch objects of one name that are mixed up without a word.
TEST(ForeignFormats, StudioObjectsOfOneNameAreTold) {
    const auto chunk = [](std::uint16_t kind, const std::string& body) {
        const auto size = static_cast<std::uint32_t>(body.size() + 6);
        std::string bytes(reinterpret_cast<const char*>(&kind), sizeof kind);
        return bytes.append(reinterpret_cast<const char*>(&size), sizeof size) + body;
    };
    const auto object = [&](const std::string& name) { return chunk(0x4000, name + std::string(3, '\0')); };
    const std::string objects = object("bolt") + object("claw") + object("bolt");
    EXPECT_EQ(SharedStudioNames(chunk(0x4D4D, chunk(2, "") + chunk(0x3D3D, objects))),
              std::vector<std::string>{"bolt"});
}

// Would catch a skin that is bound to where its bones stand, and a map that lies on the first coordinates.
TEST(ForeignFormats, ColladaKeepsBindingsAndCoordinates) {
    const eLoadResult result = LoadScene(SmallFile("dae").string());
    ASSERT_TRUE(result.scene) << Words(result);
    eLoaded loaded(result);
    const int object = loaded.Node("skinned").object;
    const auto& skin =
        std::get<eSkinModifier>(loaded.scene.objects[static_cast<std::size_t>(object)].modifiers.at(0));
    ExpectNear(skin.bindMatrices.at(0).GetTrans(), {-0.05F, 0, 0},
               "the joint, which stands at 7 centimetres");
    EXPECT_EQ(loaded.scene.maps.at(0).coordinates.channel, 2);
}

// Would catch numbers of another width than the version has, and lists and values that end too early or too
// late.
TEST(ForeignFormats, BinaryFbxOfBothWidthsIsRead) {
    for (const bool isWide : {false, true}) {
        std::string bytes(kFbxMagic);
        const auto number = [&](auto value) {
            bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
        };
        const auto head = [&](std::size_t end, std::uint32_t valueLength, const char* name) {
            for (const std::uint64_t size :
                 {std::uint64_t{end}, std::uint64_t{1}, std::uint64_t{valueLength}}) {
                isWide ? number(size) : number(static_cast<std::uint32_t>(size));
            }
            bytes += std::string(1, '\1').append(name);
        };
        number(isWide ? 7500U : 7400U);
        const std::size_t start = bytes.size(), headSize = isWide ? 26 : 14,
                          innerEnd = start + 2 * headSize + 11;
        head(innerEnd + headSize - 1, 5, "A");
        bytes += 'I';
        number(std::int32_t{-7});
        head(innerEnd, 6, "B");
        bytes += 'S';
        number(1U);
        bytes.append("x").append(2 * (headSize - 1), '\0');
        const std::optional<eFbxRecord> root = ReadFbxRecords(bytes);
        ASSERT_TRUE(root && root->Find("A") != nullptr && root->Find("A")->Find("B") != nullptr);
        EXPECT_EQ(root->Find("A")->Whole(0), -7);
        EXPECT_EQ(root->Find("A")->Find("B")->Text(0), "x");
    }
}

// Would catch a broken file that ends the program, or gives neither a scene nor a word.
TEST(ForeignFormats, ABrokenFileGivesWords) {
    const support::eTempFolder folder;
    for (const char* extension : {"fbx", "dae", "obj", "3ds"}) {
        const std::string whole = ContentOf(SmallFile(extension));
        const std::string file = folder / "broken";
        for (std::size_t length = 1; length < whole.size();
             length += length < 12 ? 1 : whole.size() / 24 + 1) {
            std::ofstream(file, std::ios::binary | std::ios::trunc) << whole.substr(0, length);
            const eLoadResult result = LoadScene(file);
            EXPECT_NE(result.scene.has_value(), !result.problems.empty()) << extension << " " << length;
        }
    }
}

// Would catch a trial that takes the program with it, or that takes one end for another.
TEST(ForeignFormats, ATrialOutlivesItsWork) {
    const platform::eTrialLimits limits{std::uint64_t{1} << 28, 1};
    using platform::eTrialEnd;
    EXPECT_EQ(platform::TryInCopy([] { return std::string("a word"); }, limits).words, "a word");
    EXPECT_EQ(platform::TryInCopy([]() -> std::string { std::abort(); }, limits).end, eTrialEnd::Died);
    EXPECT_EQ(platform::TryInCopy([]() -> std::string { throw std::bad_alloc(); }, limits).end,
              eTrialEnd::OutOfMemory);
    const auto forever = []() -> std::string {
        const std::atomic<bool> goesOn = true;
        while (goesOn) {
        }
        return {};
    };
    EXPECT_EQ(platform::TryInCopy(forever, limits).end, eTrialEnd::OutOfTime);
}

}  // namespace
}  // namespace standalone
