#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "animation/animation_reader.h"
#include "animation/export_frame.h"
#include "animation/vertex_section.h"
#include "base/ansi.h"
#include "support/export_run.h"
#include "support/scene_builder.h"

namespace {

using support::eNode;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::optional<eAnimation> ReadBytes(const std::string& content, std::string& problem) {
    return ReadAnimation({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()}, problem);
}

// A model "m" of bones without geometry, all of them in the set "all".
class AnimationFile : public testing::Test {
protected:
    eNode Bone(const std::string& name) {
        bones.push_back(root.Child(name).Object(standalone::eHelperObject{}));
        return bones.back();
    }
    // A bone that goes along x, a metre a frame.
    eNode Mover(int frames) {
        return Bone("mover")
            .Key({.frame = 0, .position = host::Point3{0, 0, 0}})
            .Key({.frame = static_cast<double>(frames),
                  .position = host::Point3{static_cast<float>(frames), 0, 0}});
    }
    support::eExportRun& Export(std::function<void(eExportOptions&)> options = {}) {
        scene.SelectionSet("all", bones);
        run.reset();  // it gives the messages back that it collects
        run = std::make_unique<support::eExportRun>(scene.Build());
        run->SetOptions(std::move(options));
        run->Do();
        return *run;
    }
    eAnimation Read(const std::string& name) {
        std::string problem;
        const auto animation = ReadBytes(run->Read("m/" + name + ".anm"), problem);
        EXPECT_TRUE(animation) << problem;
        return animation.value_or(eAnimation{});
    }
    // Per record of the bone its frame and flags.
    std::vector<std::pair<int, int>> Records(const eAnimation& animation, const std::string& bone) {
        std::vector<std::pair<int, int>> records;
        for (const eAnimationFrame& frame : animation.frames) {
            for (const eAnimationKey& key : frame.keys) {
                if (animation.bones[static_cast<std::size_t>(key.bone)] == bone) {
                    records.emplace_back(frame.frame, key.flags);
                }
            }
        }
        return records;
    }

    support::eSceneBuilder scene;
    eNode root = scene.Node("root").Property("Model=m").Object(standalone::eHelperObject{});
    std::vector<eNode> bones{root};
    std::unique_ptr<support::eExportRun> run;
};

// Catches any change of the bytes that the engine reads.
TEST_F(AnimationFile, AStillBoneComesOutByteForByte) {
    root.Property("animation=run,arm,3-5");
    scene.SelectionSet("arm", {Bone("arm").Position(1, -2, 0)});
    using namespace std::string_literals;
    std::string problem, bytes = Export().Read("m/run.anm");
    const std::string pose = "\x0b\0\0\0\x80\x3f\0\0\0\xc0\0\0\0\0\0\0\0\x80\0\0\0\x80\0\0\0\x80"s;
    EXPECT_EQ(bytes,
              "EANM\x01\0\x06\0FRMS\x03\0\0\0BMAP\x01\0\0\0\x03"s
              "arm"s
              "FRM2\0\0\x01\0"s +
                  pose + "FRM2\x02\0\x01\0"s + pose);
    bytes[bytes.size() - pose.size() - 4] = 0;  // the number of the last frame
    EXPECT_FALSE(ReadBytes(bytes, problem)) << "two frames of one number";
}

// Catches frames without news that cost something, ends without a full pose, a drift that is too slow for any
// single frame, and a visibility that is lost or takes the pose with it.
TEST_F(AnimationFile, OnlyNewsIsStored) {
    constexpr int kFull = kFramePosition | kFrameRotation | kFrameVisible;
    root.Property("animation=run,all,0-29").Property("animation=once,all,40-40");
    Bone("still").Position(1, 2, 3);
    Bone("still_lod1");
    Mover(10).Key({.frame = 29, .position = host::Point3{10.0076F, 0, 0}});
    Bone("ghost").VisibilityKey(0, 0.5F).VisibilityKey(12, 0);
    Bone("left").Scale(-1, 1, 1);
    EXPECT_THAT(Export().Messages(), IsEmpty());
    const eAnimation animation = Read("run");
    EXPECT_EQ(animation.frameCount, 30);
    EXPECT_THAT(animation.bones, testing::ElementsAre("root", "still", "mover", "ghost", "left"));
    using eRecords = std::vector<std::pair<int, int>>;
    EXPECT_EQ(Records(animation, "still"), (eRecords{{0, kFull}, {29, kFull}}));
    EXPECT_EQ(
        Records(animation, "ghost"),
        (eRecords{{0, kFull}, {12, kFrameHidden}, {29, kFramePosition | kFrameRotation | kFrameHidden}}));
    // The engine's axes are mirrored against the scene's: a root has the mark, and a mirrored child has it
    // too.
    for (const char* mirrored : {"root", "left"}) {
        EXPECT_EQ(Records(animation, mirrored),
                  (eRecords{{0, kFull | kFrameMirrored}, {29, kFull | kFrameMirrored}}));
    }
    EXPECT_EQ(Records(animation, "mover").size(), 18U);  // 0 to 10, from there each third, and the end
    EXPECT_EQ(Records(animation, "mover")[1], (std::pair<int, int>{1, kFramePosition}));
    EXPECT_FALSE(RestorePoses(animation).at(20 * animation.bones.size() + 3).visible);
    EXPECT_THAT(run->Text("m/anim.txt"), HasSubstr("frame 12 {\n\tvisibility 0\n}"));
    EXPECT_EQ(Read("once").frameCount, 1);
    EXPECT_EQ(Records(Read("once"), "still"), (eRecords{{0, kFull}}));
}

// Catches poses in other units, against another node or turned the other way, frames at other times, and a
// form that the studio's tools don't know. The arm goes from (1, 0, 0) to (1, -2, 0.5) metres against its
// turned parent, and turns by 90 degrees, told left-handed: half way sin 22.5 = 0.3827. It is hidden from
// frame 3 on.
TEST_F(AnimationFile, TheReportTellsEveryPose) {
    scene.Settings().unitMetres = 0.01;
    root.Property("animation=run,arm,2-4").Position(500, 0, 0).Rotation({0, 0, 1}, 90);
    eNode arm = Bone("Arm").VisibilityKey(0, 1).VisibilityKey(3, 0);
    arm.Key({.frame = 2, .position = host::Point3{100, 0, 0}, .rotation = standalone::eRotation{}});
    arm.Key({.frame = 4,
             .position = host::Point3{100, -200, 50},
             .rotation = support::RotationAbout({0, 0, 1}, 90)});
    scene.SelectionSet("arm", {arm});
    EXPECT_EQ(Export().Read("m/anim.txt"),
              "-= Animation: run, Node Arm =-\n"
              " frame 2 {\r\n\tvisibility 1\r\n\tposition 1 \t 0 \t 0\r\n\torientation 0 0 0 1\r\n}\r\n"
              "frame 3 {\r\n\tvisibility 0\r\n\tposition 1 \t -1 \t 0.25\r\n"
              "\torientation 0 0 -0.3827 0.9239\r\n}\r\n"
              "frame 4 {\r\n\tvisibility 0\r\n\tposition 1 \t -2 \t 0.5\r\n"
              "\torientation 0 0 -0.7071 0.7071\r\n}\r\n");
}

// Catches a sheared bone that is animated without a word, or by a rotation that is none.
TEST_F(AnimationFile, AShearedBoneIsTold) {
    root.Property("animation=run,all,0-0");
    Bone("skew").Matrix({{1, 0, 0}, {0.6F, 0.8F, 0}, {0, 0, 1}, {0, 0, 0}});
    EXPECT_THAT(Export().Messages(),
                testing::ElementsAre(HasSubstr("Матрица для кости 'skew'"), "ERROR: Non-ortho"));
    EXPECT_NEAR(std::fabs(Read("run").frames.at(0).keys.at(1).rotation.z), 0.15594, 1e-4);
}

// Catches a difference that is too small or too large to count, one that does not count, and flat faces that
// keep the normals of the frame before.
TEST(VertexSection, AVertexIsTheSameWithinAThousandth) {
    const auto isSame = [](auto change) {
        eExportVertex before;
        before.smoothingGroup = 2;
        eExportVertex now = before;
        change(now);
        return IsSameVertex(now, before);
    };
    EXPECT_TRUE(isSame([](eExportVertex& v) { v.position = {0.0009F, -0.0009F, 0.0009F}; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.position.z = 0.0011F; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.normal.x = -0.0011F; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.uv0.y = 0.0011F; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.uv1.x = 0.0011F; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.tangent.w = 0.0011F; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.weights[1] = 0.0011F; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.boneIndices[2] = 1; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.color ^= 1; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { ++v.subset; }));
    EXPECT_FALSE(isSame([](eExportVertex& v) { v.smoothingGroup = 3; }));
    EXPECT_FALSE(IsSameVertex({}, {})) << "without smoothing group";
}

// Catches the bone that the file has no number for written under that of another, and animations lost beside.
TEST_F(AnimationFile, A256thBoneEndsTheFile) {
    root.Property("animation=many,all,0-1").Property("animation=most,most,0-1");
    while (bones.size() < 256) {
        Bone("bone" + std::to_string(bones.size()));
    }
    scene.SelectionSet("most", {bones.begin() + 1, bones.end()});
    EXPECT_THAT(Export().Messages(),
                testing::ElementsAre("Ошибка: Более 255 анимированых костей в анимации 'many'"));
    EXPECT_EQ(Read("many").bones.size(), 255U);
    EXPECT_THAT(Read("many").frames, IsEmpty());
    EXPECT_EQ(Read("most").bones.size(), 255U);
    EXPECT_EQ(Read("most").frames.at(0).keys.size(), 255U);
}

// Catches a bone that takes the pose or the visibility of what is only fixed to it, and a motion against the
// bone that is lost without a word.
TEST_F(AnimationFile, OnlyItsOwnNodeMovesABone) {
    const standalone::eBoxObject box{1, 1, 1};
    root.Property("animation=run,all,0-10").Property("animation=rest,all,20-21");
    eNode arm = Mover(10).Object(box).Property("Poly");
    const auto fixed = [&](const char* name) {
        bones.push_back(arm.Child(name).Object(box).Property("CommonMesh=mover").Position(0, 0, 1));
        return bones.back();
    };
    fixed("badge");
    fixed("flap")
        .Key({.frame = 0, .rotation = support::RotationAbout({0, 0, 1}, 0)})
        .Key({.frame = 10, .rotation = support::RotationAbout({0, 0, 1}, 30)});
    fixed("lamp").VisibilityKey(0, 1).VisibilityKey(4, 0).VisibilityKey(15, 1);
    eNode inner = Bone("group").GroupHead().Property("Poly").Child("inner").GroupMember().GroupHead();
    inner.Object(standalone::eHelperObject{})
        .Key({.frame = 0, .position = host::Point3{0, 0, 0}})
        .Key({.frame = 10, .position = host::Point3{5, 0, 0}});
    inner.Child("part").GroupMember().Object(box);
    Export();
    const eAnimation animation = Read("run");
    EXPECT_THAT(animation.bones, testing::ElementsAre("root", "mover", "badge", "flap", "lamp", "group"));
    const std::vector<eBonePose> poses = RestorePoses(animation);
    EXPECT_TRUE(poses.at(7 * animation.bones.size() + 1).position.Equals({7, 0, 0}, 1e-4F));
    EXPECT_EQ(Records(animation, "group").size(), 2U);
    std::vector<std::string> lost;
    for (const std::string& message : run->Messages()) {
        if (message.find("отдельной костью") != std::string::npos) {
            lost.push_back(message.substr(0, message.find(')')));
        }
    }
    using testing::EndsWith;
    EXPECT_THAT(
        lost,
        testing::ElementsAre(
            EndsWith("Узел 'flap' входит в мэш кости 'mover', но движется относительно нее. Движение не "
                     "записано (анимации: 'run', 'rest'"),
            EndsWith("Узел 'lamp' входит в мэш кости 'mover', но скрывается отдельно от нее. Его видимость "
                     "не записана (анимации: 'run'"),
            AllOf(HasSubstr("Узел 'part' входит в мэш кости 'group', но движется"), EndsWith("'rest'"))));
}

// Catches poses read at times that overflow or count from 0, and animations that are lost as they lie outside
// the frames from 0 to 65535.
TEST_F(AnimationFile, AnimationsMayLieAnywhereOnTheTimeline) {
    scene.Settings().firstFrame = -5;
    scene.Settings().lastFrame = 5;
    root.Property("animation=early,all").Property("animation=late,all,13000000-13000002");
    Bone("mover")
        .Key({.frame = -5, .position = host::Point3{-5, 0, 0}})
        .Key({.frame = 5, .position = host::Point3{5, 0, 0}})
        .Key({.frame = 13000000, .position = host::Point3{7, 0, 0}})
        .Key({.frame = 13000002, .position = host::Point3{9, 0, 0}});
    EXPECT_THAT(Export().Messages(), testing::ElementsAre(HasSubstr("'late' (кадры 13000000-13000002)")));
    for (const auto& [name, frames, begin] : {std::tuple{"early", 11, -5.0F}, std::tuple{"late", 3, 7.0F}}) {
        const eAnimation animation = Read(name);
        const std::vector<eBonePose> poses = RestorePoses(animation);
        ASSERT_EQ(poses.size(), 2U * static_cast<std::size_t>(frames));
        for (int frame = 0; frame < frames; ++frame) {
            EXPECT_NEAR(poses[2U * static_cast<std::size_t>(frame) + 1].position.x,
                        begin + static_cast<float>(frame), 1e-3F);
        }
    }
    Export([](eExportOptions& options) { options.currentRangeOnly = true; });
    EXPECT_TRUE(run->Has("m/early.anm") && !run->Has("m/late.anm"));
}

// Catches vertices of a mesh that no file holds.
TEST_F(AnimationFile, ARefusedMeshHasNoVertices) {
    root.Property("animation=run,all,0-2");
    host::Mesh mesh = support::GridMesh(1, 1);
    mesh.verts[0].x = std::numeric_limits<float>::quiet_NaN();
    Bone("flag").Object(standalone::eMeshObject{mesh, {}}).Property("CommonMesh");
    EXPECT_THAT(Export().Messages(), Contains(HasSubstr("координаты не являются числами")));
    constexpr int kFull = kFramePosition | kFrameRotation | kFrameVisible;
    EXPECT_EQ(Records(Read("run"), "flag"), (std::vector<std::pair<int, int>>{{0, kFull}, {2, kFull}}));
}

// Nothing is lost beside what is told, and nothing is written elsewhere.
TEST_F(AnimationFile, DeclarationsThatCannotBeWrittenAreTold) {
    for (const char* declaration :
         {"animation=cut", "animation=a,all,0-10", "animation=b,all,5-20", "animation=up,all,30-35,../evil",
          "animation=dots,all,40-45,..", "animation=c,all,60-63,a"}) {
        root.Property(declaration);
    }
    Mover(20);
    EXPECT_THAT(Export().Messages(),
                UnorderedElementsAre(
                    HasSubstr("'' не найдено"), AllOf(HasSubstr("'a' и 'b'"), HasSubstr("анимации 'a'")),
                    HasSubstr("'../evil' в анимации 'up'"), HasSubstr("'..' в анимации 'dots'"),
                    HasSubstr("'a' и 'c' записываются в один файл")));
    EXPECT_TRUE(run->Has("m/a.anm") && run->Has("m/b.anm") && run->Has("m/cut.anm"));
    EXPECT_FALSE(run->Has("evil.anm"));
}

// Catches animations that are played backward over the frames of another, and told when nothing is lost.
TEST_F(AnimationFile, ReversedAnimationsMustNotShareFrames) {
    root.Property("animation=a,all,0-10").Property("animation=b,all,2-8").Property("animation=c,all,20-30");
    Mover(10);
    EXPECT_THAT(Export().Messages(), IsEmpty());
    root.Property("animation=d,all,7-9");
    EXPECT_THAT(
        Export([](eExportOptions& options) { options.reverseAnimation = true; }).Messages(),
        UnorderedElementsAre(HasSubstr("'a' и 'd' пересекаются"), HasSubstr("'b' и 'd' пересекаются")));
}

}  // namespace
