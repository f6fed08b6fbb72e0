#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "animation/animation_reader.h"
#include "animation/model_motion.h"
#include "scene/current_model.h"
#include "standalone/loaders/load_scene.h"
#include "support/export_run.h"
#include "support/source_tree.h"

namespace {

using host::Matrix3;
using host::Point3;
using host::Quat;

std::span<const std::uint8_t> BytesOf(const std::string& file) {
    return {reinterpret_cast<const std::uint8_t*>(file.data()), file.size()};
}

const std::string kSamples = "../shared/samples/";

bool HasSamples() {
    return std::filesystem::exists(support::SourceTree() / kSamples);
}

standalone::eSceneData Load(const std::string& path) {
    auto scene =
        standalone::LoadScene((support::SourceTree() / path).string(), {.fps = {}, .asModel = "proof"}).scene;
    EXPECT_TRUE(scene) << path;
    return scene.value_or(standalone::eSceneData{});
}

// Where the bone stands against its parent, in metres; the root with the engine's mirror in y.
Matrix3 PoseInScene(support::eExportRun& run, host::INode& node, int frame) {
    const host::TimeValue t = frame * run.host.GetTicksPerFrame();
    Matrix3 pose = NoScale(node.GetNodeTM(t)) * Inverse(NoScale(node.GetParentNode()->GetNodeTM(t)));
    pose.SetTrans(pose.GetTrans() * static_cast<float>(run.host.GetMasterScale(host::Interface::kMetres)));
    return &node == run.exporter.model->currentRoot ? pose * host::ScaleMatrix({1, -1, 1}) : pose;
}

// "" if the restored pose is the one of the scene, within what the reduction of keys may leave out.
std::string DifferenceOf(const eBonePose& pose, Matrix3 scene) {
    if (pose.mirrored != (scene.Parity() != 0)) {
        return "mirrored";
    }
    if (pose.mirrored) {
        scene.SetRow(2, -scene.GetRow(2));
    }
    const Quat q(scene);
    const auto isTurned = [&](float sign) {
        return Point3{pose.rotation.x, pose.rotation.y, pose.rotation.z}.Equals(
            {sign * q.x, sign * q.y, sign * q.z}, 1.02e-5F);
    };
    if (pose.rotation.w > 0 || (!isTurned(-1) && !(std::fabs(q.w) < 2e-5F && isTurned(1)))) {
        return "rotation";
    }
    return pose.position.Equals(scene.GetTrans(), 1.001e-3F) ? "" : "position";
}

eAnimation ReadWritten(const std::string& file) {
    std::string problem;
    const auto animation = ReadAnimation(BytesOf(file), problem);
    EXPECT_TRUE(animation) << problem;
    return animation.value_or(eAnimation{});
}

class SampleAnimation : public testing::TestWithParam<std::string> {
protected:
    static void Compare(support::eExportRun& run, const eExportAnimation& declared, bool reversed) {
        const std::string folder =
            run.exporter.model->modelFolder.Text().substr((run.folder / "game/").size());
        const std::string file = run.Read(folder + "/" + eName(declared.binary).Text() + ".anm");
        const eAnimation animation = ReadWritten(file);
        ASSERT_EQ(animation.frameCount, declared.lastFrame - declared.firstFrame + 1);
        ASSERT_FALSE(animation.bones.empty());
        const std::vector<eBonePose> poses = RestorePoses(animation);
        auto pose = poses.begin();
        for (int i = 0; i < animation.frameCount; ++i) {
            const int frame = reversed ? declared.lastFrame - i : declared.firstFrame + i;
            for (const std::string& bone : animation.bones) {
                host::INode* node = run.host.GetINodeByName(bone.c_str());
                ASSERT_NE(node, nullptr) << bone;
                ASSERT_EQ(DifferenceOf(*pose++, PoseInScene(run, *node, frame)), "")
                    << declared.name << ": " << bone << " in frame " << frame;
            }
        }
    }
};

// Catches every pose that the engine gets otherwise than the scene has it, on the whole way from the scene
// file over clips, sampling and reduction to the bytes, forward and backward.
TEST_P(SampleAnimation, EveryBoneIsWhereTheSceneHasIt) {
    if (GetParam().starts_with(kSamples) && !HasSamples()) {
        GTEST_SKIP() << "no samples";
    }
    support::eExportRun run(Load(GetParam()));
    for (const bool reversed : {false, true}) {
        run.SetOptions([&](eExportOptions& options) {
            options.exportMesh = 0;
            options.reverseAnimation = reversed;
        });
        run.Do();
        EXPECT_FALSE(run.exporter.motion->animations.empty());
        for (const eExportAnimation& declared : run.exporter.motion->animations) {
            Compare(run, declared, reversed);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleAnimation,
                         testing::Values("examples/animations.scene.json", kSamples + "artist/soldier.glb",
                                         kSamples + "artist/soldier_takes.glb",
                                         kSamples + "gltf/CesiumMan/glTF-Binary/CesiumMan.glb",
                                         kSamples + "gltf/Fox/glTF/Fox.gltf",
                                         kSamples +
                                             "gltf/InterpolationTest/glTF-Binary/InterpolationTest.glb"));

}  // namespace
