#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "animation/animation_reader.h"
#include "geometry/vertex_layout.h"
#include "mesh/file/mesh_reader.h"
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
    return &node == run.exporter.currentRoot ? pose * host::ScaleMatrix({1, -1, 1}) : pose;
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
    if (!isTurned(-1) && !(std::fabs(q.w) < 2e-5F && isTurned(1))) {
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
        const std::string folder = run.exporter.modelFolder.Text().substr((run.folder / "game/").size());
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
        EXPECT_FALSE(run.exporter.animations.empty());
        for (const eExportAnimation& declared : run.exporter.animations) {
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

// The vertices of the node in metres, in the space of its bone.
std::vector<Point3> VerticesInScene(support::eExportRun& run, host::INode& node, int frame) {
    const host::TimeValue t = frame * run.host.GetTicksPerFrame();
    host::Object* object = node.EvalWorldState(t).obj->ConvertToType(t, host::kTriObjectClass);
    const Matrix3 toBone = node.GetObjTMAfterWSM(t) * Inverse(NoScale(node.GetNodeTM(t)));
    std::vector<Point3> vertices;
    for (const Point3& vertex : static_cast<host::TriObject*>(object)->GetMesh().verts) {
        vertices.push_back(vertex * toBone);
    }
    return vertices;
}

struct ePlayedVertex {
    Point3 position;
    int storedIn = 0;  // the frame that it was last stored in
};

// Moves the vertices as a frame of the animation tells.
void Play(const eAnimationFrame& frame, const eFileMesh& mesh, std::vector<ePlayedVertex>& vertices) {
    for (const eAnimationKey& key : frame.keys) {
        std::string problem;
        const auto blocks = ReadVertexSection(key.vertexSection, static_cast<int>(mesh.stride), problem);
        ASSERT_TRUE(blocks) << problem;
        for (const eVertexBlock& block : *blocks) {
            for (int i = 0; i < block.count; ++i) {
                const std::uint8_t* vertex = &block.vertices[static_cast<std::size_t>(i) * mesh.stride];
                vertices.at(static_cast<std::size_t>(block.first + i)) = {
                    UnpackVertex(mesh.subMeshes.front().format, vertex).position, frame.frame};
            }
        }
    }
}

// Catches vertices that go out under the number of another, in the wrong frame or not at all. What moves by
// no more than a millimetre from one frame to the next may stay where it was.
TEST(SampleAnimation, TheCubeMorphsInTheFile) {
    if (!HasSamples()) {
        GTEST_SKIP() << "no samples";
    }
    standalone::eSceneData scene =
        Load(kSamples + "gltf/AnimatedMorphCube/glTF-Binary/AnimatedMorphCube.glb");
    scene.nodes.back().properties += "\r\nCommonMesh";
    support::eExportRun run(std::move(scene));
    run.Do();
    const std::string meshFile = run.Read("proof/.mesh"), file = run.Read("proof/square.anm");
    std::string problem;
    const auto meshes = ReadMeshFile(BytesOf(meshFile), problem);
    ASSERT_TRUE(meshes) << problem;
    const eFileMesh& mesh = meshes->meshes.at(0);
    const eAnimation animation = ReadWritten(file);
    host::INode& node = *run.host.GetINodeByName(animation.bones.at(0).c_str());
    const std::vector<Point3> rest = VerticesInScene(run, node, 0);
    std::vector<ePlayedVertex> vertices(mesh.vertexCount);
    for (const eAnimationFrame& frame : animation.frames) {
        Play(frame, mesh, vertices);
        const std::vector<Point3> moved = VerticesInScene(run, node, frame.frame);
        for (std::size_t v = 0; v < vertices.size(); ++v) {
            const Point3 written = mesh.Vertex(mesh.subMeshes.front(), v).position;
            const auto inScene =
                std::ranges::find_if(rest, [&](const Point3& p) { return p.Equals(written, 1e-6F); });
            ASSERT_NE(inScene, rest.end());
            const float tolerance = 1e-3F * static_cast<float>(frame.frame - vertices[v].storedIn) + 1e-6F;
            ASSERT_TRUE(vertices[v].position.Equals(moved[static_cast<std::size_t>(inScene - rest.begin())],
                                                    tolerance))
                << v << " in frame " << frame.frame;
        }
    }
    EXPECT_GT(animation.frames.size(), 50U);
}

}  // namespace
