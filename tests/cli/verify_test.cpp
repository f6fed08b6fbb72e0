// Whether the program says that files are not the scene.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "support/program.h"
#include "support/source_tree.h"

namespace {

using nlohmann::json;
using support::eProgramResult;
using testing::HasSubstr;

class Verify : public testing::Test {
protected:
    eProgramResult Run(const std::string& command, const std::string& flags) const {
        const std::string scene = (support::SourceTree() / "examples/tank.scene.json").string();
        return support::RunProgram(
            folder, command + " '" + scene + "' --config '" + (folder / "config") + "' " + flags);
    }
    std::string Root(const std::string& flag) const { return flag + " '" + (folder / "out") + "' "; }

    support::eTempFolder folder;
};

// Catches a proof that writes, one that reads other files than those asked for, and a status that hides what
// was found.
TEST_F(Verify, TellsByItsExitStatus) {
    const eProgramResult fresh = Run("verify", "");
    EXPECT_EQ(fresh.exitCode, 0) << fresh.output << fresh.errors;
    EXPECT_THAT(fresh.output, HasSubstr("\nholds: 1 model, "));
    EXPECT_FALSE(folder.Has("config"));
    const eProgramResult exported = Run("export", Root("--resource-root") + "--verify");
    EXPECT_EQ(exported.exitCode, 0) << exported.output << exported.errors;
    EXPECT_THAT(exported.output, HasSubstr("\nholds: 1 model, "));

    const std::string file = "out/units/tank/.mesh";
    std::string mesh = folder.Read(file);
    mesh.resize(mesh.size() - 6);
    folder.Write(file, mesh);
    const eProgramResult spoilt = Run("verify", Root("--root") + "--json");
    EXPECT_EQ(spoilt.exitCode, 5) << spoilt.errors;
    const json said = json::parse(spoilt.output);
    EXPECT_EQ(said.at("schema"), 1);
    EXPECT_EQ(said.at("clean"), false);
    EXPECT_EQ(said.at("models").at(0).at("meshes").at(0).at("findings").at(0).at("kind"), "missing mesh");
    EXPECT_EQ(folder.Read(file), mesh);
}

// Catches a misspelt bound or root that is passed over, so that nothing is proved.
TEST_F(Verify, RefusesWhatItCannotUse) {
    for (const char* flags : {"--tolerance mm", "--tolerance cm=1", "--tolerance mm=-1", "--root nowhere"}) {
        EXPECT_EQ(Run("verify", flags).exitCode, 2) << flags;
    }
}

}  // namespace
