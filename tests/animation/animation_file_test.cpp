#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "animation/animation_reader.h"
#include "animation/export_frame.h"
#include "base/ansi.h"
#include "support/export_run.h"
#include "support/scene_builder.h"

namespace {

using support::eExportRun;
using support::eNode;
using support::eSceneBuilder;
using testing::HasSubstr;
using testing::IsEmpty;

std::optional<eAnimation> ReadFile(const std::string& content, std::string& problem) {
    return ReadAnimation({reinterpret_cast<const std::uint8_t*>(content.data()), content.size()}, problem);
}

class AnimationFile : public testing::Test {
protected:
    // A root with these declarations, all of its nodes in the set "all".
    eNode Root(std::initializer_list<const char*> declarations) {
        eNode root = scene.Node("root").Property("Model=m").Object(standalone::eHelperObject{});
        for (const char* declaration : declarations) {
            root.Property(declaration);
        }
        return root;
    }
    eAnimation Read(eExportRun& run, const std::string& name) {
        content = run.Read("m/" + name + ".anm");
        std::string problem;
        const auto animation = ReadFile(content, problem);
        EXPECT_TRUE(animation) << problem;
        return animation.value_or(eAnimation{});
    }
    int CountRecords(const eAnimation& animation, const std::string& bone) {
        int count = 0;
        for (const eAnimationFrame& frame : animation.frames) {
            for (const eAnimationKey& key : frame.keys) {
                count += animation.bones[static_cast<std::size_t>(key.bone)] == bone ? 1 : 0;
            }
        }
        return count;
    }

    eSceneBuilder scene;
    std::string content;
};

// Frames without news cost nothing, and both ends hold a full pose.
TEST_F(AnimationFile, KeepsTwoRecordsOfAStaticBone) {
    eNode root = Root({"animation=run,all,0-29", "animation=still,all,40-40"});
    eNode still = root.Child("still").Position(1, 2, 3).Object(standalone::eHelperObject{});
    eNode mover = root.Child("mover").Object(standalone::eHelperObject{});
    mover.Key({.frame = 0, .position = host::Point3{0, 0, 0}})
        .Key({.frame = 10, .position = host::Point3{1, 0, 0}});
    eNode ghost = root.Child("ghost").Object(standalone::eHelperObject{});
    ghost.VisibilityKey(0, 1).VisibilityKey(12, 0);
    scene.SelectionSet("all", {root, still, mover, ghost});
    eExportRun run(scene.Build());
    run.Do();
    EXPECT_THAT(run.Messages(), IsEmpty());
    const eAnimation animation = Read(run, "run");
    EXPECT_EQ(animation.frameCount, 30);
    EXPECT_EQ(CountRecords(animation, "still"), 2);
    EXPECT_EQ(CountRecords(animation, "mover"), 12);  // 0 to 10, and the end
    EXPECT_EQ(CountRecords(animation, "ghost"), 3);
    EXPECT_EQ(animation.frames.front().keys.size(), 4U);
    const eAnimationKey& first = animation.frames.front().keys[1];
    EXPECT_EQ(first.flags, kFramePosition | kFrameRotation | kFrameVisible);
    EXPECT_EQ(first.position, (host::Point3{1, 2, 3}));
    EXPECT_THAT(run.Text("m/anim.txt"), HasSubstr("frame 12 {\n\tvisibility 0\n}"));
    const eAnimation single = Read(run, "still");
    EXPECT_EQ(single.frameCount, 1);
    EXPECT_EQ(CountRecords(single, "still"), 1);
}

// The engine's axes are mirrored against the scene's: a root has the mark, and a mirrored child has it too.
TEST_F(AnimationFile, MarksMirrors) {
    eNode root = Root({"animation=run,all,0-1"});
    eNode left = root.Child("left").Scale(-1, 1, 1).Object(standalone::eHelperObject{});
    scene.SelectionSet("all", {root, left});
    eExportRun run(scene.Build());
    run.Do();
    const eAnimation animation = Read(run, "run");
    for (const eAnimationKey& key : animation.frames.front().keys) {
        EXPECT_NE(key.flags & kFrameMirrored, 0) << key.bone;
    }
}

TEST_F(AnimationFile, RunsBackward) {
    eNode root = Root({"animation=run,all,0-10"});
    eNode mover = root.Child("mover").Object(standalone::eHelperObject{});
    mover.Key({.frame = 0, .position = host::Point3{0, 0, 0}})
        .Key({.frame = 10, .position = host::Point3{10, 0, 0}});
    scene.SelectionSet("all", {root, mover});
    eExportRun run(scene.Build());
    run.SetOptions([](eExportOptions& options) { options.reverseAnimation = true; });
    run.Do();
    const auto poses = RestorePoses(Read(run, "run"));
    EXPECT_FLOAT_EQ(poses[1].position.x, 10);
    EXPECT_FLOAT_EQ(poses[2 * 10 + 1].position.x, 0);
}

// Nothing is lost beside what is told, and nothing is written elsewhere.
TEST_F(AnimationFile, TellsDeclarationsThatCannotBeWritten) {
    eNode root = Root({"animation=a,all,0-10", "animation=b,all,5-20", "animation=out,all,0-5,../evil",
                       "animation=back,all,9-3", "animation=long,all,0-70000", "animation=c,all,0-3,a"});
    eNode mover = root.Child("mover").Object(standalone::eHelperObject{});
    scene.SelectionSet("all", {root, mover});
    scene.Settings().lastFrame = 100000;
    eExportRun run(scene.Build());
    run.Do();
    const std::vector<std::string> messages = run.Messages();
    const auto isTold = [&](const std::string& part) {
        for (const std::string& message : messages) {
            if (message.find(part) != std::string::npos) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(isTold("'a' и 'b'"));
    EXPECT_TRUE(isTold("../evil"));
    EXPECT_TRUE(isTold("В анимации 'back' конечный кадр меньше начального."));
    EXPECT_TRUE(isTold("'long'"));
    EXPECT_TRUE(isTold("'a' и 'c' записываются в один файл"));
    EXPECT_TRUE(run.Has("m/b.anm"));
    EXPECT_FALSE(run.folder.Has("game/evil.anm"));
    EXPECT_FALSE(run.Has("m/long.anm"));
}

TEST_F(AnimationFile, RefusesEveryTruncation) {
    eNode root = Root({"animation=run,all,0-2"});
    scene.SelectionSet("all", {root});
    eExportRun run(scene.Build());
    run.Do();
    const std::string whole = run.Read("m/run.anm");
    std::string problem;
    ASSERT_TRUE(ReadFile(whole, problem)) << problem;
    int refused = 0;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        refused += ReadFile(whole.substr(0, length), problem) ? 0 : 1;
    }
    // The file has no end mark: what ends behind a whole record reads as a shorter animation.
    EXPECT_EQ(refused, static_cast<int>(whole.size()) - 2);
    EXPECT_FALSE(ReadFile(whole + "x", problem));
}

}  // namespace
