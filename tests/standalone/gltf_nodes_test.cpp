#include <gmock/gmock.h>

#include <random>

#include "base/ansi.h"
#include "standalone/data/transform_track.h"
#include "support/gltf_scene.h"

namespace {

using namespace standalone;
using namespace support;

std::string NodesOnly(const std::string& nodes) {
    eGltfText file;
    file.Section("nodes", nodes);
    return file.Text();
}

// (x, y, z) -> (x, -z, y): what the axes of the file become.
host::Point3 Turned(const host::Point3& p) {
    return {p.x, -p.z, p.y};
}

void ExpectNear(const host::Point3& a, const host::Point3& b, float tolerance, const std::string& what) {
    EXPECT_LE(Length(a - b), tolerance)
        << what << ": " << a.x << " " << a.y << " " << a.z << " and " << b.x << " " << b.y << " " << b.z;
}

std::string ListOf(const std::vector<float>& numbers) {
    std::string list;
    for (const float number : numbers) {
        list += (list.empty() ? "[" : ", ") + std::to_string(number);
    }
    return list + "]";
}

// A chain of nodes with random transforms, each the child of the one before, worked out in the file's axes.
struct eChain {
    std::vector<std::string> nodes;
    std::vector<host::Matrix3> worlds;
};

eChain RandomChain(unsigned seed, const std::vector<std::string>& kinds) {
    std::mt19937 random(seed);
    const auto number = [&](float low, float high) {
        const float steps = static_cast<float>(random() % 1000);
        return std::round((low + (high - low) * steps / 1000) * 1000) / 1000;
    };
    eChain chain;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        ePlacement placement;
        placement.position = {number(-5, 5), number(-5, 5), number(-5, 5)};
        placement.scale = {number(0.5F, 2), number(0.5F, 2), -number(0.5F, 2)};
        const std::vector<float> q = {number(-1, 1), number(-1, 1), number(-1, 1), number(0.1F, 1)};
        const float length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
        placement.rotation = {q[0] / length, q[1] / length, q[2] / length, q[3] / length};
        const host::Matrix3 local = PlacementMatrix(placement);
        chain.worlds.push_back(i == 0 ? local : local * chain.worlds.back());
        const host::Point3 &t = placement.position, &s = placement.scale;
        std::string node = "{\"name\": \"n" + std::to_string(i) + "\"" + kinds[i] +
                           ", \"translation\": " + ListOf({t.x, t.y, t.z}) + ", \"rotation\": " + ListOf(q) +
                           ", \"scale\": " + ListOf({s.x, s.y, s.z});
        if (i + 1 < kinds.size()) {
            node += ", \"children\": [" + std::to_string(i + 1) + "]";
        }
        chain.nodes.push_back(node + "}");
    }
    return chain;
}

constexpr const char* kMesh = R"(, "mesh": 0)";
constexpr const char* kCamera = R"(, "camera": 0)";
constexpr const char* kLight = R"(, "extensions": {"KHR_lights_punctual": {"light": 0}})";

std::string FileOf(const eChain& chain) {
    eGltfText file;
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 2});
    file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": 0}}]}])");
    file.Section("cameras", R"([{"type": "perspective", "perspective": {"yfov": 1, "znear": 1}}])");
    file.Section("extensions", R"({"KHR_lights_punctual": {"lights": [{"type": "directional"}]}})");
    std::string nodes;
    for (const std::string& node : chain.nodes) {
        nodes += (nodes.empty() ? "[" : ", ") + node;
    }
    file.Section("nodes", nodes + "]");
    return file.Text();
}

// Would catch a wrong turn of the axes anywhere: points of a node that land beside the turned ones of the
// file, a camera or light that looks elsewhere, and children of either that go astray.
TEST(GltfNodes, EverythingLandsWhereTheFileHasItTurned) {
    const std::vector<std::string> kinds = {"", kMesh, kCamera, kMesh, kLight, kCamera, "", kMesh};
    for (unsigned seed = 0; seed < 8; ++seed) {
        const eChain chain = RandomChain(seed, kinds);
        eScene scene(SceneOf(FileOf(chain)));
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            const std::string what = "seed " + std::to_string(seed) + " node " + std::to_string(i);
            const int number = NumberOf(scene.data, "n" + std::to_string(i));
            const host::Matrix3 found = scene.Node(number)->GetNodeTM(0);
            const host::Matrix3& wanted = chain.worlds[i];
            const float tolerance = 1e-4F * std::max(1.0F, Length(wanted.GetTrans()));
            ExpectNear(found.GetTrans(), Turned(wanted.GetTrans()), tolerance, what);
            const bool looks = kinds[i] == kCamera || kinds[i] == kLight;
            for (const host::Point3& p :
                 {host::Point3{1, 0, 0}, host::Point3{0, 1, 0}, host::Point3{0, 0, -1}}) {
                ExpectNear((looks ? p : Turned(p)) * found, Turned(p * wanted), tolerance, what);
            }
        }
    }
}

// Would catch a matrix read by rows, or one that is not turned like the parts that say the same.
TEST(GltfNodes, AMatrixSaysTheSameAsItsParts) {
    const eSceneData scene = SceneOf(NodesOnly(R"([
        {"name": "parts", "translation": [1, 2, 3], "rotation": [0, 0, 0.70710678, 0.70710678], "scale": [2, 3, 4]},
        {"name": "matrix", "matrix": [0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 1, 2, 3, 1]}])"));
    const host::Matrix3 parts = PlacementMatrix(NodeNamed(scene, "parts").transform.parts);
    ASSERT_TRUE(NodeNamed(scene, "matrix").transform.matrix);
    for (int row = 0; row < 4; ++row) {
        ExpectNear(parts.GetRow(row), NodeNamed(scene, "matrix").transform.matrix->GetRow(row), 1e-5F, "row");
    }
    EXPECT_EQ(NodeNamed(scene, "parts").transform.parts.position, (host::Point3{1, -3, 2}));
    EXPECT_EQ(NodeNamed(scene, "parts").transform.parts.scale, (host::Point3{2, 4, 3}));
}

// Would catch a property line of the wrong form or order, a state word that stays a property, and extras that
// are lost without a word.
TEST(GltfNodes, ExtrasBecomePropertyTextInTheOrderOfTheFile) {
    const eLoadResult result = Import(NodesOnly(R"([{"name": "a", "extras": {
        "zeta": 1, "Model": "units\\Tank", "Poly": true, "Empty": "", "Off": false, "None": null, "half": 0.5,
        "tiny": 1e-7, "big": 100000000000000000000, "whole": 2.0, "minus": -0.0, "numbers": [1, 2.5, -3],
        "animation": ["open,all,0-30", "slam,all,20-30"], "hidden": 1, "selected": true, "group": ["head", "member"],
        "properties": "Layer=2\r\n\r\nНота=да\nlast", "two lines": "a\nb", "object": {"x": 1}, "mixed": [1, "a"],
        "after": "x"}}])"));
    ASSERT_TRUE(result.scene) << ProblemsOf(result);
    const eNodeData& node = result.scene->nodes[0];
    EXPECT_EQ(ToUtf8(node.properties),
              "zeta=1\r\nModel=units\\Tank\r\nPoly\r\nEmpty\r\nhalf=0.5\r\ntiny=0.0000001\r\n"
              "big=100000000000000000000\r\nwhole=2\r\nminus=0\r\nnumbers=1,2.5,-3\r\n"
              "animation=open,all,0-30\r\nanimation=slam,all,20-30\r\n"
              "Layer=2\r\n\r\nНота=да\r\nlast\r\ntwo lines=a b\r\nafter=x");
    EXPECT_TRUE(node.hidden && node.selected && node.groupHead && node.groupMember);
    EXPECT_THAT(WarningsOf(result),
                testing::ElementsAre("extras left out, because property text can't hold them: "
                                     "/nodes/0/extras/object, /nodes/0/extras/mixed"));
}

// Would catch a nameless node without the name that its number gives, characters that break the host's text,
// and a warning for each of them.
TEST(GltfNodes, NamesFitTheCodePage) {
    const eLoadResult result =
        Import(NodesOnly(R"([{"name": "Кость"}, {}, {"name": "ok❤"}, {"name": "a\nb"}, {"name": "♻"}])"));
    ASSERT_TRUE(result.scene);
    std::vector<std::string> names;
    for (const eNodeData& node : result.scene->nodes) {
        names.push_back(ToUtf8(node.name));
    }
    EXPECT_THAT(names, testing::ElementsAre("Кость", "node_1", "ok_", "a_b", "_"));
    EXPECT_THAT(
        WarningsOf(result),
        testing::ElementsAre("characters outside code page 1251 become \"_\": \"ok❤\", \"a b\", \"♻\""));
}

// Would catch a scene other than the one that the file shows, and children out of order.
TEST(GltfNodes, TheSceneShownDecides) {
    eGltfText file;
    file.Section("nodes",
                 R"([{"name": "a"}, {"name": "b", "children": [3, 2]}, {"name": "c"}, {"name": "d"}])");
    file.Section("scenes", R"([{"nodes": [0]}, {"nodes": [1]}])");
    file.Section("scene", "1");
    const eLoadResult result = Import(file.Text());
    ASSERT_TRUE(result.scene) << ProblemsOf(result);
    ASSERT_EQ(result.scene->nodes.size(), 3U);
    EXPECT_EQ(result.scene->nodes[0].name, "b");
    EXPECT_EQ(result.scene->nodes[1].name, "d");
    EXPECT_EQ(result.scene->nodes[2].parent, 0);
    EXPECT_THAT(WarningsOf(result),
                testing::ElementsAre("the host can't show: other scenes than the one shown, "
                                     "nodes outside the scene"));
}

// Would catch a field of view taken upright, a target off the axis or at the wrong distance, and a node with
// both mesh and camera that loses one of them.
TEST(GltfNodes, CamerasLookAtTheirTargets) {
    eGltfText file;
    file.Floats("VEC3", {4, 0, -10, 6, 0, -10, 5, 2, -10});
    file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": 0}}]}])");
    file.Section("cameras", R"([
        {"type": "perspective", "perspective": {"yfov": 0.9272952, "aspectRatio": 2, "znear": 1}},
        {"type": "perspective", "perspective": {"yfov": 1, "znear": 1}, "extras": {"targetDistance": 7}}])");
    file.Section("nodes", R"([
        {"name": "free", "camera": 0, "translation": [1, 1, 5], "extras": {"group": "member"}},
        {"name": "thing", "mesh": 0, "camera": 1, "scale": [2, 2, 2]}])");
    eScene scene(SceneOf(file.Text()));
    EXPECT_NEAR(ObjectOf<eCameraObject>(scene.data, "free").fov, 90, 1e-3);  // tan of half: 0.5, times 2
    const eNodeData& free = NodeNamed(scene.data, "free");
    ASSERT_GE(free.target, 0);
    EXPECT_EQ(scene.data.nodes[static_cast<std::size_t>(free.target)].parent, -1);
    EXPECT_TRUE(scene.data.nodes[static_cast<std::size_t>(free.target)].groupMember);
    // Scaled by 2, the geometry stands at z -20 of the file, and the camera at 5 looks along -z.
    ExpectNear(scene.Node(free.target)->GetNodeTM(0).GetTrans(), {1, 20, 1}, 1e-3F, "nearest point");

    ObjectOf<eMeshObject>(scene.data, "thing");
    const eNodeData& below = NodeNamed(scene.data, "thing_camera");
    EXPECT_EQ(ObjectOf<eCameraObject>(scene.data, "thing_camera").targetDistance, 7);
    ExpectNear(scene.Node(below.target)->GetNodeTM(0).GetTrans(), {0, 7, 0}, 1e-4F, "told distance");
}

// Would catch angles of lights in radians or from the axis, a lost range, and physical brightness as
// multiplier.
TEST(GltfNodes, LightsKeepWhatTheHostKnows) {
    eGltfText file;
    file.Section("extensions", R"({"KHR_lights_punctual": {"lights": [
        {"type": "spot", "intensity": 5000, "range": 15, "color": [1, 0.5, 0],
         "spot": {"innerConeAngle": 0.39269908, "outerConeAngle": 0.52359878}},
        {"type": "point", "extras": {"multiplier": 2.5}}, {"type": "directional"}]}})");
    file.Section("nodes", R"([
        {"name": "spot", "extensions": {"KHR_lights_punctual": {"light": 0}}},
        {"name": "point", "extensions": {"KHR_lights_punctual": {"light": 1}}},
        {"name": "sun", "extensions": {"KHR_lights_punctual": {"light": 2}}}])");
    const eSceneData scene = SceneOf(file.Text());
    const auto& spot = ObjectOf<eLightObject>(scene, "spot");
    EXPECT_EQ(spot.kind, eLightKind::Spot);
    EXPECT_NEAR(spot.hotspot, 45, 1e-4);
    EXPECT_NEAR(spot.falloff, 60, 1e-4);
    EXPECT_EQ(spot.attenuation, (eAttenuation{0, 15}));
    EXPECT_EQ(spot.color, (host::Color{1, 0.5F, 0}));
    EXPECT_EQ(spot.multiplier, 1);
    EXPECT_EQ(ObjectOf<eLightObject>(scene, "point").multiplier, 2.5F);
    EXPECT_FALSE(ObjectOf<eLightObject>(scene, "point").attenuation);
    EXPECT_EQ(ObjectOf<eLightObject>(scene, "sun").kind, eLightKind::Directional);
}

// Would catch scene extras that are misread, names of nodes that are not found in another letter case, and
// unknown ones passed over in silence.
TEST(GltfNodes, SceneExtrasSetTheStage) {
    eGltfText file;
    file.Section("nodes", R"([{"name": "Wheel", "children": [1]}, {"name": "Дуло"}])");
    file.Section("scenes", R"([{"nodes": [0], "extras": {"host.range": [-5, 80], "host.ambient": [0.2, 0, 1],
        "host.metres_per_unit": 0.01, "host.selection.one": "wheel, дУЛО,,nobody", "host.selection.two": ["Wheel"],
        "host.strange": 1, "other": {}}}])");
    const eLoadResult result = Import(file.Text());
    ASSERT_TRUE(result.scene) << ProblemsOf(result);
    const eSceneData& scene = *result.scene;
    EXPECT_EQ(scene.firstFrame, -5);
    EXPECT_EQ(scene.lastFrame, 80);
    EXPECT_EQ(scene.ambient, (host::Color{0.2F, 0, 1}));
    EXPECT_EQ(scene.unitMetres, 0.01);
    EXPECT_EQ(scene.selectionSets, (std::vector<eSelectionSet>{{"one", {0, 1}}, {"two", {0}}}));
    EXPECT_THAT(WarningsOf(result),
                testing::ElementsAre("selection sets name nodes that the scene lacks: nobody",
                                     "scene extras that mean nothing here: host.strange"));
    eGltfText bad;
    bad.Section("scenes", R"([{"extras": {"host.range": [3, 1], "host.ambient": [2, 0, 0],
        "host.metres_per_unit": "x", "host.selection.a": 5, "host.fps": 0}}])");
    const eLoadResult refused = Import(bad.Text());
    EXPECT_EQ(refused.problems.size(), 5U) << ProblemsOf(refused);
}

}  // namespace
