// The program on every scene of the examples and, where they stand beside the tree, of the samples.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
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

// What is rightly told as an error of a scene, by its file's name; of all others nothing may be.
const std::map<std::string, std::string> kExpectedErrors;

class Samples : public testing::Test {
protected:
    eProgramResult Run(const std::string& arguments) { return support::RunProgram(folder, arguments); }
    std::string Quoted(const std::string& name) { return " '" + (folder / name) + "'"; }
    void Export(const std::filesystem::path& scene, int number) {
        const std::string model = " --as-model test/m" + std::to_string(number);
        const eProgramResult result =
            Run("export '" + scene.string() + "' --quiet --config" + Quoted("config") + " --resource-root" +
                Quoted("game") + (scene.extension() == ".json" ? "" : model));
        const auto expected = kExpectedErrors.find(scene.filename().string());
        if (expected == kExpectedErrors.end()) {
            EXPECT_EQ(result.exitCode, 0) << scene;
            EXPECT_EQ(result.errors, "") << scene;
        } else {
            EXPECT_EQ(result.exitCode, 3) << scene;
            EXPECT_THAT(result.errors, HasSubstr(expected->second)) << scene;
        }
    }
    void ExpectReadAsWritten(const std::string& path);

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

// A text that the engine's reader takes for a control, or reads as other strings, would come out otherwise.
void Samples::ExpectReadAsWritten(const std::string& path) {
    xIo::xSdl::eParser parser(path, folder.Read(path));
    xIo::xSdl::eReader reader;
    reader.OpenText(path, folder.Read(path));
    std::vector<std::string> read = Tokens(reader);
    for (std::string& token : read) {
        token = token[0] == '2' ? '2' + Escaped(token.substr(1)) : token;
    }
    EXPECT_EQ(read, Tokens(parser)) << path;
}

// Would catch: a scene that is exported with an error nobody expects, a file that its reader refuses or finds
// a fault in, a text that reads as another, and a name or kind that a container gives back in another way
// than the folder.
TEST_F(Samples, AreExportedInspectedAndPacked) {
    folder.MakeFolder("game");
    int count = 0;
    for (const std::filesystem::path& scene : support::SceneFiles()) {
        Export(scene, count++);
    }
    EXPECT_GT(count, 10);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "game")) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with(".mdl") || name.ends_with(".def") || name.ends_with(".material") ||
            name == "anim.txt") {
            ExpectReadAsWritten(std::filesystem::relative(entry.path(), folder.Path()).string());
        }
    }
    ASSERT_EQ(Run("pak" + Quoted("game") + Quoted("Game.pak")).exitCode, 0);
    for (const char* form : {"inspect", "inspect --json"}) {
        const eProgramResult loose = Run(form + Quoted("game"));
        EXPECT_EQ(loose.exitCode, 0) << loose.errors;
        EXPECT_THAT(loose.output, HasSubstr(".mdl"));
        EXPECT_EQ(loose.output, Run(form + Quoted("Game.pak")).output);
    }
}

}  // namespace
