#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/ansi.h"
#include "support/export_run.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;
using testing::ElementsAre;
using testing::IsEmpty;

// Would catch any change of the text that the game reads: token order, blanks, tabs, line ends, rounding,
// the mirrored root.
TEST(Run, ASmallModelComesOutByteForByte) {
    support::eSceneBuilder scene;
    support::eNode root = scene.Node("root").Property("Model=units/tank").Object(eHelperObject{});
    support::eNode arm = root.Child("arm").Position(0, 0, 1).Object(eBoxObject{1, 1, 1});
    arm.Property("Poly").Property("IKType=revolute").Property("IKMin=-1").Property("IKMax=1");
    arm.Property("speed=1,5");
    support::eExportRun run(scene.Build());

    EXPECT_EQ(run.Do(), 1);
    EXPECT_THAT(run.Messages(), IsEmpty());
    const std::string text = run.Read("units/tank/tank.mdl");
    EXPECT_EQ(text.substr(text.find("{skeleton")),
              "{skeleton\r\n"
              "\t{bone \"root\"\r\n"
              "\t\t{orientation\r\n"
              "\t\t\t1 \t 0 \t 0\r\n"
              "\t\t\t0 \t -1 \t 0\r\n"
              "\t\t\t0 \t 0 \t 1\r\n"
              "\t\t}\r\n"
              "\t\t{bone revolute \"arm\"\r\n"
              "\t\t\t{parameters \"speed=1.5;\"}\r\n"
              "\t\t\t{limits -1 1}\r\n"
              "\t\t\t{Position 0 \t 0 \t 1}\r\n"
              "\t\t\t{view poly \"arm\"}\r\n"
              "\t\t}\r\n"
              "\t}\r\n"
              "}\r\n");
    EXPECT_EQ(run.Read("units/tank/tank.def"), "{entity\r\n}\r\n");
}

}  // namespace
