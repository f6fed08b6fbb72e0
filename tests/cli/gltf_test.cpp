// The way back from written files, as its users call it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/program.h"
#include "support/source_tree.h"
#include "support/temp_folder.h"

namespace {

using support::eProgramResult;
using testing::HasSubstr;

class GltfCommand : public testing::Test {
protected:
    eProgramResult Run(const std::string& arguments) { return support::RunProgram(folder, arguments); }
    std::string Quoted(const std::string& name) { return " '" + (folder / name) + "'"; }

    support::eTempFolder folder;
};

TEST_F(GltfCommand, WritesAWholeFileOrNone) {
    folder.MakeFolder("game");
    const std::string example = (support::SourceTree() / "examples/waving_flag.scene.json").string();
    ASSERT_EQ(
        Run("export '" + example + "' --config" + Quoted("config") + " --resource-root" + Quoted("game"))
            .exitCode,
        0);
    const std::string model = Quoted("game/props/flagpole");
    const eProgramResult done = Run("gltf" + model + Quoted("out.glb"));
    EXPECT_EQ(done.exitCode, 0) << done.errors;
    EXPECT_THAT(done.output, HasSubstr("8 triangles, 1 clip, "));
    EXPECT_TRUE(folder.Read("out.glb").starts_with("glTF"));
    // A program without the page says so, and leaves none.
    const eProgramResult page = Run("preview" + model + Quoted("out.html"));
    EXPECT_EQ(page.exitCode == 0, folder.Read("out.html").ends_with("</html>\n")) << page.errors;
    EXPECT_EQ(page.exitCode == 0, page.errors.empty()) << page.errors;
    folder.Write("game/props/flagpole/.mesh", "PMSH");
    folder.Write("out.glb", "older");
    for (const std::string& broken : {model, Quoted("nowhere"), Quoted("config")}) {
        const eProgramResult refused = Run("gltf" + broken + Quoted("out.glb"));
        EXPECT_EQ(refused.exitCode, 2) << broken;
        EXPECT_THAT(refused.errors, HasSubstr("error: ")) << broken;
        EXPECT_EQ(folder.Read("out.glb"), "older") << broken;
    }
    folder.Write("small/a.mdl", "{skeleton {bone \"a\"}}");
    EXPECT_EQ(Run("gltf" + Quoted("small/a.mdl") + Quoted("no/such/out.glb")).exitCode, 1);
}

}  // namespace
