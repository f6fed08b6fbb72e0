// Packing a written tree and looking into it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/program.h"
#include "support/temp_folder.h"

namespace {

using support::eProgramResult;
using testing::HasSubstr;

class PakCommand : public testing::Test {
protected:
    eProgramResult Run(const std::string& arguments) { return support::RunProgram(folder, arguments); }
    std::string Quoted(const std::string& name) { return " '" + (folder / name) + "'"; }

    support::eTempFolder folder;
};

TEST_F(PakCommand, LooksIntoAContainer) {
    folder.Write("game/units/tank/tank.mdl", "{skeleton (include \"../bones.inc\" args(\"hull\"))}");
    folder.Write("game/units/bones.inc", "{bone (include \"tank/name.inc\")} {bone %1%}");
    folder.Write("game/units/tank/name.inc", "\"tower\"");
    folder.Write("game/other.mdl", "{skeleton {bone \"other\"}}");
    ASSERT_EQ(Run("pak" + Quoted("game") + Quoted("game.pak")).exitCode, 0);
    for (const char* asked :
         {"game.pak:/units/tank/tank.mdl", "game.pak:/Units/", "game/units/../other.mdl"}) {
        const eProgramResult result = Run("inspect" + Quoted(asked));
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        const bool isOther = std::string(asked).ends_with("other.mdl");
        EXPECT_EQ(result.output.find("tower") == std::string::npos, isOther) << result.output;
        EXPECT_EQ(result.output.find("other") != std::string::npos, isOther) << result.output;
    }
    folder.Write("loose/a.mdl", "{skeleton (include \"a.inc\")}");
    folder.Write("loose/a.inc", "{bone \"beside\"}");
    EXPECT_THAT(Run("inspect" + Quoted("loose/a.mdl")).output, HasSubstr("beside"));
    const eProgramResult none = Run("inspect" + Quoted("game.pak:/none.mdl"));
    EXPECT_EQ(none.exitCode, 2);
    EXPECT_THAT(none.errors, HasSubstr("game.pak:/none.mdl: there is no such file"));
}

// Would catch: an error that leaves the artist without the place, a broken file that ends the whole call.
TEST_F(PakCommand, TellsWhatIsBroken) {
    folder.Write("game/a.mdl", "{skeleton\n{bone \"a\"\n(1 / 0)}\n}\n");
    folder.Write("game/b.mdl", "{skeleton {bone \"fine\"}}");
    const eProgramResult result = Run("inspect" + Quoted("game"));
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.output, HasSubstr("fine"));
    EXPECT_THAT(result.errors, HasSubstr("/a.mdl: SDL: division by zero"));
    EXPECT_THAT(result.errors, HasSubstr("3:\t(1 / \xC2\xAB"
                                         "0)}"));
    folder.Write("cut.pak", "PK\5\6");
    const eProgramResult cut = Run("inspect" + Quoted("cut.pak"));
    EXPECT_EQ(cut.exitCode, 2);
    EXPECT_THAT(cut.errors, HasSubstr("can't open .pak"));
    EXPECT_EQ(Run("pak" + Quoted("none") + Quoted("none.pak")).exitCode, 2);
    EXPECT_EQ(Run("pak" + Quoted("game") + Quoted("no/folder/x.pak")).exitCode, 3);
    EXPECT_FALSE(folder.Has("none.pak"));
}

}  // namespace
