#include <gmock/gmock.h>

#include "standalone/data/transform_track.h"
#include "standalone/loaders/gltf/gltf_axes.h"
#include "support/gltf_scene.h"

namespace {

using namespace standalone;
using namespace support;
using testing::ElementsAre;

constexpr int kTicks = 160;

const eSkinModifier& SkinOf(const eSceneData& scene, const std::string& name) {
    const auto& object = scene.objects[static_cast<std::size_t>(NodeNamed(scene, name).object)];
    return std::get<eSkinModifier>(object.modifiers.at(0));
}

std::vector<float> ColumnsOf(const host::Matrix3& m) {
    std::vector<float> numbers;
    for (int row = 0; row < 4; ++row) {
        const host::Point3& r = m.GetRow(row);
        for (const float number : {r.x, r.y, r.z, row == 3 ? 1.0F : 0.0F}) {
            numbers.push_back(number);
        }
    }
    return numbers;
}

// In the file's axes.
host::Matrix3 Placed(const host::Point3& position, const eRotation& rotation, const host::Point3& scale) {
    return PlacementMatrix({position, rotation, scale});
}

const eRotation kTilt = {0.6F, 0, 0, 0.8F};
const eRotation kRoll = {0, 0.6F, 0, 0.8F};
const std::vector<host::Point3> kVertices = {{0, 0, 0}, {1, 0, 0}, {0, 2, 0}, {0, 0, 3}};

// Two joints, the second one a camera below the first, under a root that is moved, turned and scaled; a mesh
// whose node stands somewhere else and is animated, both of which the format ignores.
struct eSkinnedFile {
    host::Matrix3 root = Placed({5, 6, 7}, kTilt, {2, 2, 2});
    host::Matrix3 upper = Placed({0, 1, 0}, kRoll, {1, 1, 1}) * root;
    host::Matrix3 lower = Placed({0, 3, 0}, kTilt, {1, 1, 1}) * upper;
    host::Matrix3 meshSpace = Placed({1, 1, 1}, kRoll, {0.5F, 0.5F, 0.5F});  // of the mesh when it was bound
    std::string text;

    eSkinnedFile() {
        eGltfText file;
        std::vector<float> positions;
        for (const host::Point3& p : kVertices) {
            for (const float coordinate : {p.x, p.y, p.z}) {
                positions.push_back(coordinate);
            }
        }
        file.Floats("VEC3", positions);
        file.Bytes("VEC4", {0, 0, 0, 0, 1, 9, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0});
        file.Floats("VEC4", {1, 0, 0, 0, 1, 0, 0, 0, 0.25F, 0.5F, 0.25F, 0, 0, 0, 0, 0});
        file.Bytes("VEC4", {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        file.Bytes("VEC4", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 51, 0, 0, 0}, ", \"normalized\": true");
        file.Floats("VEC3", std::vector<float>{0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1});
        std::vector<float> binds = ColumnsOf(meshSpace * Inverse(upper));
        const std::vector<float> second = ColumnsOf(meshSpace * Inverse(lower));
        binds.insert(binds.end(), second.begin(), second.end());
        file.Floats("MAT4", binds);
        file.Bytes("SCALAR", {0, 1, 2, 1, 2, 3});
        file.Floats("SCALAR", {0, 1});
        file.Floats("VEC4", {0, 0, 0, 1, 0, 0, 1, 0});
        file.Floats("VEC3", {0, 0, 0, 9, 9, 9});
        file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": 0, "NORMAL": 5, "JOINTS_0": 1,
            "WEIGHTS_0": 2, "JOINTS_1": 3, "WEIGHTS_1": 4}, "indices": 7}]}])");
        file.Section("skins", R"([{"joints": [1, 2], "inverseBindMatrices": 6}])");
        file.Section("cameras", R"([{"type": "perspective", "perspective": {"yfov": 1, "znear": 1}}])");
        file.Section("nodes", R"([
            {"name": "root", "children": [1], "translation": [5, 6, 7], "rotation": [0.6, 0, 0, 0.8], "scale": [2, 2, 2]},
            {"name": "upper", "children": [2], "translation": [0, 1, 0], "rotation": [0, 0.6, 0, 0.8]},
            {"name": "lower", "camera": 0, "translation": [0, 3, 0], "rotation": [0.6, 0, 0, 0.8]},
            {"name": "skinned", "mesh": 0, "skin": 0, "translation": [-8, 0, 3], "rotation": [0.8, 0, 0, 0.6], "scale": [3, 1, 1]}])");
        file.Section("animations",
                     R"([{"channels": [{"sampler": 0, "target": {"node": 1, "path": "rotation"}},
            {"sampler": 1, "target": {"node": 3, "path": "translation"}}],
            "samplers": [{"input": 8, "output": 9}, {"input": 8, "output": 10}]}])");
        text = file.Text();
    }

    // Where the format has a vertex, in the host's axes; `moved` is the world of the upper joint.
    host::Point3 Wanted(const host::Point3& vertex, float upperWeight, const host::Matrix3& movedUpper,
                        const host::Matrix3& movedLower) const {
        const host::Point3 byUpper = vertex * (meshSpace * Inverse(upper) * movedUpper);
        const host::Point3 byLower = vertex * (meshSpace * Inverse(lower) * movedLower);
        return ToHostPoint(byUpper * upperWeight + byLower * (1 - upperWeight));
    }
};

// The deformed vertex in the world, as the host has it.
host::Point3 InWorld(eScene& scene, int vertex, double frame, bool isDeformed) {
    const auto t = static_cast<host::TimeValue>(frame * kTicks);
    host::INode& node = *scene.Node(NumberOf(scene.data, "skinned"));
    host::Object* object = node.GetObjectRef();
    if (isDeformed) {
        object = node.EvalWorldState(t).obj;
        auto* triangles = static_cast<host::TriObject*>(object->ConvertToType(t, host::kTriObjectClass));
        return triangles->GetMesh().verts[static_cast<std::size_t>(vertex)] * node.GetObjTMAfterWSM(t);
    }
    return ObjectOf<eMeshObject>(scene.data, "skinned").mesh.verts[static_cast<std::size_t>(vertex)] *
           node.GetObjTMAfterWSM(t);
}

// Would catch a skin whose mesh jumps with its node, bind matrices in the wrong axes or order, bones that are
// cameras, and an undeformed mesh that is not where the bind pose has it.
TEST(GltfSkin, VerticesFollowTheBonesWhereverTheNodeStands) {
    const eSkinnedFile file;
    eScene scene(SceneOf(file.text));
    const float upperShare[] = {1, 0, 0.5F, 1};
    for (int v = 0; v < 3; ++v) {
        const auto vertex = static_cast<std::size_t>(v);
        // A half turn of the upper joint about the file's z at frame 30, at rest before the first rotation
        // key.
        for (const double frame : {0.0, 30.0}) {
            const host::Matrix3 upper =
                Placed({0, 1, 0}, frame == 0 ? eRotation{} : eRotation{0, 0, 1, 0}, {1, 1, 1}) * file.root;
            const host::Matrix3 lower = Placed({0, 3, 0}, kTilt, {1, 1, 1}) * upper;
            const host::Point3 wanted = file.Wanted(kVertices[vertex], upperShare[v], upper, lower);
            const host::Point3 found = InWorld(scene, v, frame, true);
            EXPECT_TRUE(found.Equals(wanted, 1e-3F))
                << v << " at " << frame << ": " << found.x << " " << found.y << " " << found.z << ", not "
                << wanted.x << " " << wanted.y << " " << wanted.z;
        }
        // Undeformed, with the node where it rests, the mesh is in the bind pose.
        const host::Point3 bound = ToHostPoint(kVertices[vertex] * file.meshSpace);
        const host::Matrix3 rest = StillMatrix(NodeNamed(scene.data, "skinned").transform);
        EXPECT_TRUE(
            (ObjectOf<eMeshObject>(scene.data, "skinned").mesh.verts[vertex] * rest).Equals(bound, 1e-3F));
    }
    const host::Point3 normal = Normalize(VectorTransform(file.meshSpace, {0, 0, 1}));
    const host::Matrix3 rest = StillMatrix(NodeNamed(scene.data, "skinned").transform);
    const host::Matrix3 back = Inverse(rest);
    const host::Point3 n = ObjectOf<eMeshObject>(scene.data, "skinned").mesh.specifiedNormals->normals[0];
    const host::Point3 turned =
        host::Normalize({DotProd(n, back.GetRow(0)), DotProd(n, back.GetRow(1)), DotProd(n, back.GetRow(2))});
    EXPECT_TRUE(turned.Equals(ToHostPoint(normal), 1e-4F));
}

// Would catch influences beyond the first four, weights of 0 or joints named twice that are kept apart, and a
// vertex without weights that takes its neighbour's.
TEST(GltfSkin, InfluencesOfAllSetsCount) {
    const eSceneData scene = SceneOf(eSkinnedFile().text);
    const eSkinModifier& skin = SkinOf(scene, "skinned");
    EXPECT_THAT(skin.bones, ElementsAre(NumberOf(scene, "upper"), NumberOf(scene, "lower")));
    EXPECT_THAT(skin.firstWeight, ElementsAre(0, 1, 2, 4, 5));
    EXPECT_EQ(skin.weights, (std::vector<eSkinWeight>{{0, 1}, {1, 1}, {0, 0.5F}, {1, 0.5F}, {0, 0.2F}}));
}

// Would catch a mesh that is baked anew although its node stands where it should, and a pose that bends the
// exported mesh without a word.
TEST(GltfSkin, AMeshAtItsPlaceStaysAsItIs) {
    eGltfText file;
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});
    file.Bytes("VEC4", std::vector<std::uint8_t>(12));
    file.Floats("VEC4", {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0});
    file.Floats("SCALAR", {0, 1});
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0});
    file.Floats("VEC3", {1, 0, 0, 0, 0, 0});
    file.Section("meshes", R"([{"name": "m", "primitives": [
        {"attributes": {"POSITION": 0, "JOINTS_0": 1, "WEIGHTS_0": 2}}]}])");
    file.Section("skins", R"([{"joints": [0]}])");
    file.Section(
        "nodes",
        R"([{"name": "bone"}, {"name": "a", "mesh": 0, "skin": 0}, {"name": "b", "mesh": 0, "skin": 0},
        {"name": "stiff", "mesh": 0}])");
    const eLoadResult still = Import(file.Text());
    ASSERT_TRUE(still.scene) << ProblemsOf(still);
    EXPECT_EQ(NodeNamed(*still.scene, "a").object, NodeNamed(*still.scene, "b").object);
    EXPECT_NE(NodeNamed(*still.scene, "a").object, NodeNamed(*still.scene, "stiff").object);
    EXPECT_EQ(ObjectOf<eMeshObject>(*still.scene, "a").mesh.verts[2], (host::Point3{0, 0, 1}));
    EXPECT_THAT(WarningsOf(still), ElementsAre());

    const auto warnings = [&](const char* output) {
        eGltfText moved = file;
        moved.Section(
            "animations",
            std::string(R"([{"channels": [{"sampler": 0, "target": {"node": 0, "path": "translation"}}],
                          "samplers": [{"input": 3, "output": )") +
                output + "}]}]");
        return WarningsOf(Import(moved.Text()));
    };
    EXPECT_THAT(warnings("4"), ElementsAre());
    EXPECT_THAT(warnings("5"), ElementsAre(testing::HasSubstr("not where the mesh was bound")));
}

// Would catch skins that read beyond their joints or matrices.
TEST(GltfSkin, BrokenSkinsAreTold) {
    const auto problems = [](const std::string& skin, std::uint8_t joint) {
        eGltfText file;
        file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});
        file.Bytes("VEC4", std::vector<std::uint8_t>(12, joint));
        file.Floats("VEC4", {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0});
        file.Floats("MAT4", std::vector<float>(16));
        file.Section("meshes", R"([{"primitives": [
            {"attributes": {"POSITION": 0, "JOINTS_0": 1, "WEIGHTS_0": 2}}]}])");
        file.Section("skins", "[" + skin + "]");
        file.Section("nodes", R"([{"name": "bone"}, {"mesh": 0, "skin": 0}, {"name": "outside"}])");
        file.Section("scenes", R"([{"nodes": [0, 1]}])");
        return ProblemsOf(Import(file.Text()));
    };
    EXPECT_EQ(problems(R"({"joints": [0]})", 1),
              "/meshes/0/primitives/0: 3 influences name joints beyond the 1 of the skin\n");
    EXPECT_EQ(problems(R"({"joints": [0, 0], "inverseBindMatrices": 3})", 0),
              "/skins/0/inverseBindMatrices: 1 matrix for 2 joints\n");
    EXPECT_EQ(problems(R"({"joints": [2]})", 0), "/skins/0/joints: node 2 lies outside the scene\n");
}

}  // namespace
