#include "animation/animation_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "animation/model_motion.h"
#include "base/ansi.h"
#include "base/format.h"
#include "run/model_texts.h"
#include "scene/current_model.h"
#include "support/scene_builder.h"
#include "support/skeleton_walk.h"

namespace {

using namespace standalone;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The table of a root with the property, in a scene of 100 frames with the selection set "All".
class eTable {
public:
    explicit eTable(const std::vector<std::string>& properties, bool currentRangeOnly = false)
        : walk(Scene(properties)) {
        walk.run.model->currentRoot = &walk.Root();
        walk.run.frameStart = 2;
        walk.run.frameEnd = 40;
        walk.run.options.currentRangeOnly = currentRangeOnly;
        ReadAnimations(walk.run);
    }

    // NAME of SET: FIRST-LAST, FILE at SPEED
    std::string First() const {
        const eExportAnimation& a = walk.run.motion->animations.at(0);
        return (format("%s of %s: %s-%s, %s at %s") % a.name % a.selection % a.firstFrame % a.lastFrame %
                a.binary % a.speed)
            .Text();
    }
    std::string Block() {
        xIo::eMemoryStream stream;
        walk.run.texts->defWriter = std::make_unique<xIo::xSdl::eWriter>();
        walk.run.texts->defWriter->Attach(&stream);
        WriteAnimationBlock(walk.run);
        walk.run.texts->defWriter.reset();
        return support::TextOf(stream);
    }

    support::eSkeletonWalk walk;

private:
    static eSceneData Scene(const std::vector<std::string>& properties) {
        support::eSceneBuilder scene;
        support::eNode root = scene.Node("root");
        for (const std::string& property : properties) {
            root.Property(property);
        }
        scene.SelectionSet("Legs", {});
        scene.SelectionSet("All", {root});
        scene.SelectionSet("ALL", {});
        return scene.Build();
    }
};

// Would catch a declaration cut at the wrong place: each row is one that artists write.
TEST(AnimationTable, DeclarationsAreCutAsArtistsWriteThem) {
    for (const auto& [declaration, read] : std::initializer_list<std::pair<const char*, const char*>>{
             {"animation=walk,legs,0-30,walk_fast,150", "walk of 0: 0-30, walk_fast at 150"},
             {"animation=run,all,5-10,150", "run of 1: 5-10, run at 150"},
             {"animation=run,all,5-10,fast", "run of 1: 5-10, fast at 0"},
             {"animation=run,all,5 10,,150", "run of 1: 5-10, run at 150"},
             {"animation=run,all,5 - 10, file , 12.5", "run of 1: 5-10, file at 12.5"},
             {" Animation =  run , all ,7", "run of 1: 7-40, run at 0"},
             {"animation=run,all,x-10", "run of 1: 0-10, run at 0"},
             // Without a set the host's range serves, and separators in front of a token are skipped.
             {"animation=run", "run of -1: 2-40, run at 0"},
             {"animation=run,,0-10", "run of -1: 2-40, run at 0"},
         }) {
        EXPECT_EQ(eTable({declaration}).First(), read) << declaration;
    }
}

// Would catch a broken range that reaches the frame table, or takes the others with it.
TEST(AnimationTable, ABrokenRangeIsDropped) {
    const eTable table({"animation=back,all,10-5", "animation=long,all,0-65536",
                        "animation=never,all,20000000-20000001", "animation=good,all,2-3"});
    EXPECT_THAT(table.walk.Messages(),
                ElementsAre("Ошибка: В анимации 'back' конечный кадр меньше начального.\nАнимация пропущена.",
                            "Ошибка: В анимации 'long' больше 65536 кадров.\nАнимация пропущена.",
                            "Ошибка: В анимации 'never' есть кадры, до которых не доходит время сцены.\n"
                            "Анимация пропущена."));
    ASSERT_THAT(table.walk.run.motion->animations, SizeIs(1));
    EXPECT_EQ(table.First(), "good of 1: 2-3, good at 0");
}

// Would catch an animation half outside the timeline that is sampled by the option or passes silently without
// it, or one outside that is forgotten.
TEST(AnimationTable, TheCurrentRangeLimitsWhatIsSampled) {
    const std::vector<std::string> declared = {"animation=in,all,2-40", "animation=out,all,1-40,file"};
    eTable limited(declared, true);
    EXPECT_TRUE(limited.walk.run.motion->animations[0].inRange);
    EXPECT_FALSE(limited.walk.run.motion->animations[1].inRange);
    EXPECT_EQ(limited.Block(), "{skeleton\n\t{animation\n\t\t{binary \"file\" {name \"out\"}}\n\t}\n}\n");
    EXPECT_THAT(limited.walk.Messages(), IsEmpty());
    const eTable all(declared);
    EXPECT_TRUE(all.walk.run.motion->animations[1].inRange);
    EXPECT_THAT(all.walk.Messages(), ElementsAre("Advice: Анимация 'out' (кадры 1-40) выходит за "
                                                 "пределы шкалы времени (кадры 2-40)."));
}

// Would catch a block that tells what the game knows already, or leaves out what it can't know.
TEST(AnimationTable, TheBlockListsWhatTheFileCannotTell) {
    EXPECT_EQ(eTable({"animation=plain,all,0-1"}).Block(), "");
    EXPECT_EQ(eTable({"animation=run,all,5-10,150", "animationresume=a,all,0-1", "animation=plain,all,0-1",
                      "AnimationAuto=b,all,0-1,B,50"})
                  .Block(),
              "{skeleton\n"
              "\t{animation\n"
              "\t\t{binary \"run\" {speed 1.5}}\n"
              "\t\t{binary \"a\" {resume}}\n"
              "\t\t{binary \"B\" {name \"b\"}{speed 0.5}{autostart}}\n"
              "\t}\n"
              "}\n");
}

// Would catch members of a group judged apart from their head, and a set that covers others than its own.
TEST(AnimationTable, AnimationsTouchTheNodesOfTheirSet) {
    support::eSceneBuilder scene;
    support::eNode head = scene.Node("head").GroupHead().Selected();
    head.Child("member").GroupMember();
    scene.Node("other");
    scene.SelectionSet("heads", {head});
    support::eSkeletonWalk walk(scene.Build());
    const host::INode &member = walk.Node("member"), &other = walk.Node("other");
    EXPECT_TRUE(AnimationTouchesNode(walk.run, member, 0));
    EXPECT_FALSE(AnimationTouchesNode(walk.run, other, 0));
    EXPECT_TRUE(AnimationTouchesNode(walk.run, other, -1));
    walk.run.options.selectedOnly = true;
    EXPECT_FALSE(AnimationTouchesNode(walk.run, other, -1));
    EXPECT_TRUE(AnimationTouchesNode(walk.run, member, -1));
}

}  // namespace
