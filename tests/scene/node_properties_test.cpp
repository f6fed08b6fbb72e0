#include "scene/properties/node_properties.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "base/ansi.h"
#include "scene/properties/node_kind.h"
#include "scene/properties/node_name.h"
#include "scene/properties/prop_text.h"
#include "standalone/standalone_host.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;

// A scene of one node with the property buffer.
class eOneNode {
public:
    explicit eOneNode(const std::string& buffer, const std::string& name = "node")
        : host(Scene(buffer, name)) {}
    host::INode& Node() { return *host.GetRootNode()->GetChildNode(0); }

private:
    static eSceneData Scene(const std::string& buffer, const std::string& name) {
        support::eSceneBuilder scene;
        scene.Node(name).Property(buffer);
        return scene.Build();
    }
    StandaloneHost host;
};

std::string Normalized(const std::string& buffer, bool dropReserved = false) {
    return NormalizeUserProps(eOneNode(buffer).Node(), dropReserved);
}

// Would catch control characters or Cyrillic that survive, a lost empty pair, a value that runs over its
// second "=".
TEST(NodeProperties, TheBufferBecomesPairs) {
    EXPECT_EQ(Normalized(""), "");
    EXPECT_EQ(Normalized("Model=a\r\nPoly"), "Model=a;Poly;");
    EXPECT_EQ(Normalized("a=b=c"), "a=b;");
    EXPECT_EQ(Normalized("a=\r\n\r\nb\r\n"), "a;;b;");
    EXPECT_EQ(Normalized(";"), ";");
    EXPECT_EQ(Normalized("\tK\x01"
                         "ey = 1\nx"),
              "Key = 1x;");
    EXPECT_EQ(Normalized("Цвет=красный\r\nb=1"_ansi), ";b=1;");
}

// Would catch a reserved key that leaks into the game's parameters, or one of the artist's that is lost.
TEST(NodeProperties, ReservedKeysAndEmptyKeysAreDropped) {
    EXPECT_EQ(Normalized("Mesh=x\r\nSpeed=1,5\r\n\r\nikMIN=2\r\nHOLD=a", true), "Speed=1,5;");
    EXPECT_EQ(Normalized("CommonMesh\r\nGround\r\nNoSkin\r\nTags=a b\r\nMeshes\r\n =1", true),
              "CommonMesh;Ground;NoSkin;Tags=a b;Meshes; =1;");
}

// Would catch a lookup that finds prefixes, trims blanks, minds letter case, or looks into values.
TEST(NodeProperties, KeysAreFoundWhole) {
    eOneNode node("STATIC\r\nPolygon=1\r\nKey = 1\r\nx=Land;y\r\nPo=ly\r\nlast");
    EXPECT_TRUE(HasUserProp(node.Node(), "Static"));
    EXPECT_TRUE(HasUserProp(node.Node(), "last"));
    EXPECT_TRUE(HasUserProp(node.Node(), "Y"));
    EXPECT_FALSE(HasUserProp(node.Node(), "Poly"));
    EXPECT_FALSE(HasUserProp(node.Node(), "Key"));
    EXPECT_FALSE(HasUserProp(node.Node(), "Land"));
    EXPECT_FALSE(HasUserProp(node.Node(), "las"));
}

// Would catch a difference between the search without allocation and what it stands for.
TEST(NodeProperties, TheQuickLookupAnswersAsTheNormalizedText) {
    std::mt19937 random(7);
    const std::string alphabet = "abAB=;\r\n \t\xE0";
    for (int round = 0; round < 20000; ++round) {
        std::string buffer, key;
        for (auto length = random() % 12; length > 0; --length) {
            buffer += alphabet[random() % alphabet.size()];
        }
        for (auto length = 1 + random() % 2; length > 0; --length) {
            key += alphabet[random() % 4];
        }
        eOneNode node(buffer);
        const std::string text = NormalizeUserProps(node.Node(), false);
        ASSERT_EQ(HasUserProp(node.Node(), key), ePropText(text).Find(key)) << buffer << " : " << key;
    }
}

// Would catch a final separator counted as a pair, and a cursor that runs past the end.
TEST(PropText, TheCursorWalksPairs) {
    const std::string text = "a=1;;b;c=2=3;";
    ePropText pairs(text);
    EXPECT_EQ(pairs.Count(), 4);
    EXPECT_EQ(pairs.Value(), "1");
    EXPECT_TRUE(pairs.Seek(1));
    EXPECT_EQ(pairs.Key(), "");
    EXPECT_TRUE(pairs.Seek(3));
    EXPECT_EQ(pairs.Key(), "c");
    EXPECT_EQ(pairs.Value(), "2");
    EXPECT_FALSE(pairs.Seek(4));
    EXPECT_EQ(pairs.Key(), "");
    EXPECT_FALSE(pairs.Next());
    EXPECT_TRUE(pairs.Find("B"));
    EXPECT_EQ(pairs.Value(), "");
    EXPECT_FALSE(pairs.Find("d"));
}

// Would catch names that differ between the files of one model.
TEST(NodeName, NamesBecomeSafe) {
    EXPECT_EQ(CleanNodeName("Кость 1"_ansi, true), "______1");
    EXPECT_EQ(CleanNodeName("A \"b\"\t", true), "a_'b'_");
    EXPECT_EQ(CleanNodeName("door_dup_vol", true), "door");
    EXPECT_EQ(CleanNodeName("door_vol_dup", true), "door_vol");
    EXPECT_EQ(CleanNodeName("a_VOL", true), "a");
    EXPECT_EQ(CleanNodeName("_vol", true), "_vol");
    EXPECT_EQ(CleanNodeName("_dup_vol", true), "_dup");
    EXPECT_EQ(CleanNodeName("Units\\Tank_vol", false), "units\\tank_vol");
}

// Would catch a level read from the wrong place of the name.
TEST(NodeName, TheLevelStandsBehindTheFirstMark) {
    EXPECT_EQ(LodLevelOfName("hull_lod2"), 2);
    EXPECT_EQ(LodLevelOfName("hull_lodx"), 0);
    EXPECT_EQ(LodLevelOfName("hull"), 0);
    EXPECT_EQ(LodLevelOfName("a_lod1_lod3"), 1);
    EXPECT_EQ(GetLodLevel(eOneNode("", "Hull_LOD12_vol").Node()), 12);
}

// Would catch a wrong order of the questions: properties go before the object, "Volume" before "Obstacle".
TEST(NodeKind, TheFirstHitDecides) {
    EXPECT_EQ(ClassifyNode(eOneNode("Obstacle\r\nvolume").Node()), eNodeKind::Volume);
    EXPECT_EQ(ClassifyNode(eOneNode("Body\r\nArea\r\nSupportPoint").Node()), eNodeKind::SupportPoint);
    EXPECT_EQ(ClassifyNode(eOneNode("Body\r\nObstacle=0").Node()), eNodeKind::Zone);
    EXPECT_EQ(ClassifyNode(eOneNode("Preview").Node()), eNodeKind::Preview);
    EXPECT_EQ(ClassifyNode(eOneNode("").Node()), eNodeKind::Ordinary);

    const auto kindOf = [](const char* property, eObjectKind object) {
        support::eSceneBuilder scene;
        scene.Node("n").Property(property).Object(std::move(object));
        return ClassifyNode(*StandaloneHost(scene.Build()).GetINodeByName("n"));
    };
    EXPECT_EQ(kindOf("Area", eLightObject{}), eNodeKind::Zone);
    EXPECT_EQ(kindOf("", eLightObject{}), eNodeKind::Light);
    EXPECT_EQ(kindOf("", eCameraObject{}), eNodeKind::Camera);
    EXPECT_EQ(kindOf("", eTargetObject{}), eNodeKind::Target);
    EXPECT_EQ(kindOf("", eCircleObject{.radius = 1}), eNodeKind::Ordinary);
}

}  // namespace
