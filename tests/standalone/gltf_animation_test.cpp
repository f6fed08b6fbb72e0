#include <gmock/gmock.h>

#include "base/ansi.h"
#include "support/gltf_scene.h"

namespace {

using namespace standalone;
using namespace support;
using testing::ElementsAre;

constexpr int kTicks = 160;

host::Matrix3 At(eScene& scene, const std::string& name, double frame) {
    return scene.Node(NumberOf(scene.data, name))->GetNodeTM(static_cast<int>(frame * kTicks));
}

// One channel per sampler, in order: "node path" pairs, then input, output and interpolation of each.
std::string Animation(const std::string& name, const std::vector<std::array<std::string, 5>>& channels) {
    std::string list, samplers;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const auto& [node, path, input, output, interpolation] = channels[i];
        list += std::string(i == 0 ? "" : ", ") + "{\"sampler\": " + std::to_string(i) +
                ", \"target\": {\"node\": " + node + ", \"path\": \"" + path + "\"}}";
        samplers += std::string(i == 0 ? "" : ", ") + "{\"input\": " + input + ", \"output\": " + output +
                    ", \"interpolation\": \"" + interpolation + "\"}";
    }
    return "{\"name\": \"" + name + "\", \"channels\": [" + list + "], \"samplers\": [" + samplers + "]}";
}

// A node "a", one part of which moves by the keys.
eGltfText Moved(const std::string& path, const std::vector<float>& times, const std::vector<float>& values,
                const std::string& interpolation, const std::string& node = R"({"name": "a"})") {
    eGltfText file;
    file.Floats("SCALAR", times);
    file.Floats(path == "rotation" ? "VEC4" : path == "weights" ? "SCALAR" : "VEC3", values);
    file.Section("nodes", "[" + node + "]");
    file.Section("animations", "[" + Animation("x", {{"0", path, "0", "1", interpolation}}) + "]");
    return file;
}

// Would catch straight lines that bend, turns the long way round, keys beside their frames, and parts of one
// node that disturb one another.
TEST(GltfAnimation, LinearKeysStayStraight) {
    eGltfText file;
    file.Floats("SCALAR", {0.33333334F, 1});  // frames 10 and 30
    file.Floats("VEC3", {0, 0, 0, 2, 4, 6});
    file.Floats("SCALAR", {0, 2});
    file.Floats("VEC4",
                {0, 0, 0, 2, 0, 0, -1.41421356F, -1.41421356F});  // a quarter turn, neither of length 1
    file.Section("nodes", R"([{"name": "a", "scale": [1, 2, 3]}])");
    file.Section("animations", "[" +
                                   Animation("x", {{"0", "translation", "0", "1", "LINEAR"},
                                                   {"0", "rotation", "2", "3", "LINEAR"}}) +
                                   "]");
    eSceneData data = SceneOf(file.Text());
    EXPECT_EQ(data.nodes[0].keys.size(), 4U);
    EXPECT_EQ(data.nodes[0].keys[1].frame, 10);
    eScene scene(std::move(data));
    EXPECT_EQ(At(scene, "a", 0).GetTrans(), (host::Point3{0, 0, 0}));
    EXPECT_TRUE(At(scene, "a", 15).GetTrans().Equals({0.5F, -1.5F, 1}, 1e-5F));
    EXPECT_TRUE(At(scene, "a", 90).GetTrans().Equals({2, -6, 4}, 1e-5F));
    // Half of a quarter turn about the file's z, the host's -y: x goes towards the file's y, the host's z.
    const float half = 0.70710678F;
    EXPECT_TRUE(At(scene, "a", 30).GetRow(0).Equals({half, 0, half}, 1e-5F));
    EXPECT_TRUE(At(scene, "a", 60).GetRow(0).Equals({0, 0, 1}, 1e-5F));
    EXPECT_TRUE(At(scene, "a", 60).GetRow(1).Equals({0, 3, 0}, 1e-5F));
}

// Would catch a step that glides, or comes a frame early or late.
TEST(GltfAnimation, StepsJumpAtTheirKeys) {
    eSceneData data = SceneOf(
        Moved("translation", {0, 0.5F, 1, 1.5F}, {1, 0, 0, 5, 0, 0, 5, 0, 0, 9, 0, 0}, "STEP").Text());
    EXPECT_EQ(data.nodes[0].keys.size(), 6U);  // none twice where nothing jumps
    eScene scene(std::move(data));
    const auto x = [&](double frame) { return At(scene, "a", frame).GetTrans().x; };
    EXPECT_EQ(x(14.99), 1);
    EXPECT_EQ(x(15), 5);
    EXPECT_EQ(x(44.99), 5);
    EXPECT_EQ(x(45), 9);
}

// Would catch tangents exchanged or not scaled by the time between keys, and ends that are not hit.
TEST(GltfAnimation, SplinesAreExactAtTheFrames) {
    // In-tangent, value, out-tangent per key.
    const float keys[3][3] = {{9, 0, 3}, {-2, 4, 1}, {5, -1, 7}};
    std::vector<float> numbers;
    for (const auto& key : keys) {
        for (const float part : key) {
            numbers.insert(numbers.end(), {part, 0, 0});
        }
    }
    // Frames 1.5, 31.5 and 91.5.
    eScene scene(SceneOf(Moved("translation", {0.05F, 1.05F, 3.05F}, numbers, "CUBICSPLINE").Text()));
    for (int frame = 2; frame <= 91; ++frame) {
        const int k = frame < 31.5 ? 0 : 1;
        const double length = k == 0 ? 1 : 2;
        const double t = (frame / 30.0 - (k == 0 ? 0.05 : 1.05)) / length;
        const double wanted =
            (2 * t * t * t - 3 * t * t + 1) * keys[k][1] + length * (t * t * t - 2 * t * t + t) * keys[k][2] +
            (-2 * t * t * t + 3 * t * t) * keys[k + 1][1] + length * (t * t * t - t * t) * keys[k + 1][0];
        ASSERT_NEAR(At(scene, "a", frame).GetTrans().x, wanted, 1e-4) << frame;
    }
    EXPECT_NEAR(At(scene, "a", 0).GetTrans().x, 0, 1e-6);
    EXPECT_NEAR(At(scene, "a", 200).GetTrans().x, -1, 1e-6);
}

// The soldier's takes in small: two nodes, three animations that move the first, one that moves the second.
eGltfText Takes(const std::string& nodes) {
    eGltfText file;
    file.Floats("SCALAR", {0, 1});
    file.Floats("SCALAR", {0.1F, 0.5F});
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0});
    file.Floats("VEC3", {7, 0, 0, 8, 0, 0});
    file.Section("nodes", nodes);
    file.Section("animations", "[" + Animation("idle", {{"0", "translation", "0", "2", "LINEAR"}}) + ", " +
                                   Animation("walk/run", {{"0", "translation", "1", "3", "LINEAR"}}) + ", " +
                                   Animation("Blink", {{"1", "translation", "1", "2", "LINEAR"}}) + ", " +
                                   Animation("idle", {{"0", "translation", "0", "2", "LINEAR"},
                                                      {"1", "scale", "1", "2", "LINEAR"}}) +
                                   "]");
    return file;
}

// Would catch clips on top of one another or with the wrong gap, a pose that glides from one clip into the
// next, and a declaration that does not name its frames and nodes.
TEST(GltfAnimation, ClipsThatMoveTheSameLieBehindOneAnother) {
    eScene scene(SceneOf(
        Takes(R"([{"name": "root", "children": [1], "extras": {"Model": "m"}}, {"name": "eye"}])").Text()));
    // idle 0-30 and Blink 3-15 share the timeline; walk takes 12 frames from 32 on, the second idle 31
    // from 46.
    EXPECT_EQ(scene.data.nodes[0].properties,
              "Model=m\r\nanimation=idle,idle,0-30\r\nanimation=walk_run,walk_run,32-44\r\n"
              "animation=Blink,Blink,3-15\r\nanimation=idle_2,idle_2,46-76");
    EXPECT_EQ(
        scene.data.selectionSets,
        (std::vector<eSelectionSet>{{"idle", {0}}, {"walk_run", {0}}, {"Blink", {1}}, {"idle_2", {0, 1}}}));
    EXPECT_EQ(scene.data.firstFrame, 0);
    EXPECT_EQ(scene.data.lastFrame, 76);
    const auto x = [&](double frame) { return At(scene, "root", frame).GetTrans().x; };
    EXPECT_NEAR(x(15), 0.5, 1e-5);
    EXPECT_EQ(x(30), 1);
    EXPECT_EQ(x(32), 7);
    EXPECT_NEAR(x(38), 7.5, 1e-5);
    EXPECT_EQ(x(44), 8);
    EXPECT_EQ(x(46), 0);
    EXPECT_EQ(x(76), 1);
}

// Would catch declarations beside the artist's own, at the wrong model, or for nobody; a range that cuts
// declared clips; and set names that hide the artist's sets.
TEST(GltfAnimation, ModelsDeclareWhatMovesThem) {
    eGltfText file = Takes(R"([{"name": "a", "extras": {"Model": "m", "AnimationAuto": "all,all,0-10"}},
                                        {"name": "b", "children": [2]}, {"name": "c"}])");
    file.Section("scenes", R"([{"nodes": [0, 1],
        "extras": {"host.range": [0, 20], "host.selection.blink": "c"}}])");
    const eSceneData own = SceneOf(file.Text());
    EXPECT_EQ(own.nodes[0].properties, "Model=m\r\nAnimationAuto=all,all,0-10");
    EXPECT_EQ(own.nodes[1].properties, "animation=Blink,Blink_2,3-15\r\nanimation=idle_2,idle_2,46-76");
    EXPECT_EQ(own.selectionSets,
              (std::vector<eSelectionSet>{{"blink", {2}}, {"Blink_2", {1}}, {"idle_2", {0, 1}}}));
    EXPECT_EQ(own.lastFrame, 76);

    // Made a model, the gathered root declares for all of them, by the numbers that the nodes have then.
    const eSceneData made =
        SceneOf(Takes(R"([{"name": "Тест"}, {"name": "тест"}])").Text(), {.fps = 10, .asModel = "art/thing"});
    EXPECT_EQ(made.nodes[0].name, "thing");
    EXPECT_EQ(made.nodes[0].properties,
              "Model=art/thing\r\nanimation=idle,idle,0-10\r\nanimation=walk_run,walk_run,12-16\r\n"
              "animation=Blink,Blink,1-5\r\nanimation=idle_2,idle_2,18-28");
    EXPECT_EQ(made.selectionSets[3], (eSelectionSet{"idle_2", {1, 2}}));
    EXPECT_EQ(ToUtf8(made.nodes[2].name), "тест_2");
}

// Would catch frames counted by another rate than the file's, and a caller's rate that does not win.
TEST(GltfAnimation, TheRateIsTheCallersOrTheScenes) {
    eGltfText file = Takes(R"([{"name": "a"}, {"name": "b"}])");
    file.Section("scenes", R"([{"nodes": [0, 1], "extras": {"host.fps": 60}}])");
    EXPECT_EQ(SceneOf(file.Text()).nodes[0].keys[1].frame, 60);
    EXPECT_EQ(SceneOf(file.Text(), {.fps = 24}).nodes[0].keys[1].frame, 24);
}

// Would catch morph weights of the wrong target, targets left in the file's axes, and keys where none are
// needed.
TEST(GltfAnimation, WeightsMoveTheVertices) {
    eGltfText file;
    file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});
    file.Floats("VEC3", {0, 0, 1, 0, 0, 1, 0, 0, 1});
    file.Floats("VEC3", {0, 2, 0, 0, 0, 0, 0, 0, 0});
    file.Floats("SCALAR", {0, 1, 2});
    file.Floats("SCALAR", {0, 0, 1, 0, 1, 0.5F});
    file.Section("meshes", R"([{"weights": [0.25, 0], "primitives": [{"attributes": {"POSITION": 0},
        "targets": [{"POSITION": 1}, {"POSITION": 2}]}]}])");
    file.Section("nodes", R"([{"name": "a", "mesh": 0}])");
    file.Section("animations", "[" + Animation("x", {{"0", "weights", "3", "4", "LINEAR"}}) + "]");
    const eSceneData scene = SceneOf(file.Text());
    const auto& object = ObjectOf<eMeshObject>(scene, "a");
    EXPECT_EQ(object.mesh.verts[1], (host::Point3{1, -0.25F, 0}));
    ASSERT_EQ(object.vertexKeys.size(), 3U);
    EXPECT_EQ(object.vertexKeys[1].frame, 30);
    EXPECT_EQ(object.vertexKeys[1].vertices[0], (host::Point3{0, -1, 0}));
    EXPECT_EQ(object.vertexKeys[2].vertices[0], (host::Point3{0, -1, 1}));
}

// Would catch animations that are read as something else because the file breaks a rule.
TEST(GltfAnimation, BrokenAnimationsAreTold) {
    const auto problems = [](const std::vector<float>& times, const std::vector<float>& values,
                             const std::string& path, const std::string& node, const char* interpolation) {
        return ProblemsOf(Import(Moved(path, times, values, interpolation, node).Text()));
    };
    EXPECT_EQ(problems({0, 2, 1}, {0, 0, 0, 0, 0, 0, 0, 0, 0}, "scale", "{}", "LINEAR"),
              "/accessors/0: the times of keys don't rise from 0 on\n");
    EXPECT_EQ(problems({0, 1}, {0, 0, 0}, "scale", "{}", "LINEAR"),
              "/animations/0/samplers/0: 2 keys have 3 numbers as their values\n");
    EXPECT_EQ(problems({0, 1}, {0, 0, 0, 0, 0, 0}, "scale", "{}", "CUBICSPLINE"),
              "/animations/0/samplers/0: 2 keys have 6 numbers as their values\n");
    EXPECT_EQ(problems({0}, {0, 0, 0, 0}, "rotation", "{}", "LINEAR"),
              "/nodes/0: an animation gives the node a rotation of length 0\n");
    EXPECT_EQ(problems({0}, {0}, "weights", "{}", "LINEAR"),
              "/animations/0/samplers/0: weights move node 0, which has no morph targets\n");
    EXPECT_EQ(
        problems({0}, {0, 0, 0}, "scale", R"({"matrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]})", "LINEAR"),
        "/nodes/0: an animation moves the node, which has a matrix instead of parts\n");
    EXPECT_EQ(problems({0, 3e30F}, {0, 0, 0, 1, 1, 1}, "scale", "{}", "LINEAR"),
              "/animations/0: the keys lie too far from the start for the host's timeline\n");
    EXPECT_EQ(problems({0, 400000}, std::vector<float>(18), "scale", "{}", "CUBICSPLINE"),
              "/animations/0/samplers/0: the animations unfold to too many keys\n");
}

}  // namespace
