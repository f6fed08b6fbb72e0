// Packing a written tree and looking into it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "io/sdl/sdl_reader.h"
#include "io/sdl/sdl_writer.h"
#include "io/streams/stream_memory.h"
#include "support/program.h"
#include "support/source_tree.h"
#include "support/temp_folder.h"

namespace {

using support::eProgramResult;
using testing::HasSubstr;
using testing::IsEmpty;

class PakCommand : public testing::Test {
protected:
    eProgramResult Run(const std::string& arguments) { return support::RunProgram(folder, arguments); }
    void ExportScenes() {
        folder.MakeFolder("game");
        int count = 0;
        for (const std::filesystem::path& scene : support::SceneFiles()) {
            const bool isDocument = scene.extension() == ".json";
            const std::string model = " --as-model test/m" + std::to_string(count++);
            const eProgramResult result =
                Run("export '" + scene.string() + "' --quiet --config" + Quoted("config") +
                    " --resource-root" + Quoted("game") + (isDocument ? "" : model));
            EXPECT_TRUE(result.exitCode == 0 || result.exitCode == 3) << scene << result.errors;
        }
    }
    std::string Quoted(const std::string& name) { return " '" + (folder / name) + "'"; }

    support::eTempFolder folder;
};

// The tokens of a text as they are spelled, controls resolved by the reader or, by the parser, not.
template <class Source>
std::vector<std::string> Tokens(Source& source) {
    std::vector<std::string> tokens;
    while (source.Next().type != xIo::xSdl::kTokenEnd) {
        source.Unget();
        const xIo::xSdl::eToken& token = source.Next();
        tokens.push_back(std::to_string(token.type) + std::string(token.text));
    }
    return tokens;
}

// A string as the writer spells it, between its quotes.
std::string Escaped(const std::string& text) {
    xIo::eMemoryStream stream;
    xIo::xSdl::eWriter writer;
    writer.Attach(&stream);
    writer.String(text.c_str());
    writer.Close();
    const auto content = stream.Content();
    return {content.begin() + 1, content.end() - 1};
}

// Would catch: a text of the export that the engine's reader takes for a control, or reads as other strings.
TEST_F(PakCommand, ReadsEveryWrittenTextToItsTokens) {
    ExportScenes();
    int texts = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "game")) {
        const std::string name = entry.path().filename().string();
        if (!name.ends_with(".mdl") && !name.ends_with(".def") && !name.ends_with(".material") &&
            name != "anim.txt") {
            continue;
        }
        const std::string path = std::filesystem::relative(entry.path(), folder.Path()).string();
        xIo::xSdl::eParser parser(path, folder.Read(path));
        xIo::xSdl::eReader reader;
        reader.OpenText(path, folder.Read(path));
        std::vector<std::string> read = Tokens(reader);
        for (std::string& token : read) {
            token = token[0] == '2' ? '2' + Escaped(token.substr(1)) : token;
        }
        EXPECT_EQ(read, Tokens(parser)) << path;
        ++texts;
    }
    EXPECT_GT(texts, 20);
}

// Would catch: a file kind, a name or a text that a container gives back in another way than the folder.
TEST_F(PakCommand, ShowsTheSameAsTheFolder) {
    ExportScenes();
    const eProgramResult packed = Run("pak" + Quoted("game") + Quoted("Game.pak"));
    ASSERT_EQ(packed.exitCode, 0) << packed.errors;
    EXPECT_THAT(packed.output, HasSubstr(" files, "));
    ASSERT_TRUE(folder.Has("Game.pak"));
    for (const char* form : {"inspect", "inspect --json"}) {
        const eProgramResult loose = Run(form + Quoted("game"));
        const eProgramResult inside = Run(form + Quoted("Game.pak"));
        EXPECT_EQ(loose.exitCode, 0) << loose.errors;
        EXPECT_EQ(inside.exitCode, 0) << inside.errors;
        EXPECT_THAT(loose.output, HasSubstr(".mdl"));
        EXPECT_EQ(loose.output, inside.output);
    }
}

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
