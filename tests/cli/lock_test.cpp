#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "support/program.h"
#include "support/temp_folder.h"

namespace {

using support::eProgramResult;
using testing::HasSubstr;
using testing::Not;

// Long enough to be stopped in the middle.
std::string Walking(const std::string& model) {
    return R"({"scene": 1, "range": [0, 3000], "nodes": [{"name": "root", "properties": ["Model=)" + model +
           R"(", "animation=walk,all,0-3000"], "object": {"type": "helper"}, "children": [{"name": "part",
        "properties": ["Poly", "IKType=revolute"], "object": {"type": "box", "width": 1, "length": 2,
        "height": 3}, "keys": [{"frame": 0, "position": [0, 0, 0]}, {"frame": 3000, "position": [1, 0, 0]}]}]}]})";
}

class Locks : public testing::Test {
protected:
    Locks() {
        folder.MakeFolder("game");
        folder.Write("a.scene.json", Walking("units/a"));
        folder.Write("b.scene.json", Walking("units/b"));
    }
    ~Locks() override { Shell("[ ! -e pid ] || kill -KILL $(cat pid) 2> /dev/null"); }

    int Shell(const std::string& words) const {
        return std::system(("cd '" + folder.Path() + "' || exit 1\n" + words).c_str());
    }
    std::string Words(const std::string& scene) const {
        return "export '" + (folder / scene) + ".scene.json' --resource-root '" + (folder / "game") +
               "' --config '" + (folder / "config") + "' ";
    }
    // Another process that has the folder of "a", as long as it is stopped.
    void StopInTheMiddle() const {
        ASSERT_EQ(Shell(ZYR_PROGRAM " " + Words("a") + R"(> first 2>&1 & echo $! > pid
            while [ ! -s game/units/a/.zyrexport.lock ]; do kill -0 $(cat pid) || exit 1; done
            kill -STOP $(cat pid))"),
                  0);
    }
    eProgramResult Export(const std::string& scene, const std::string& flags) const {
        return support::RunProgram(folder, Words(scene) + flags);
    }
    std::size_t FilesIn(const std::string& name) const {
        const std::filesystem::directory_iterator files(folder / name);
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    support::eTempFolder folder;
};

// Would catch: two runs that write over one another, a run that does not say whose the folder is, one that is
// held up by a run elsewhere, a wait without end or for a run that is gone, a lock that stays.
TEST_F(Locks, LetOneRunAtATimeWriteAFolder) {
    StopInTheMiddle();
    const eProgramResult refused = Export("a", "--wait 0 --report '" + (folder / "report") + "'");
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_THAT(refused.errors, HasSubstr("(process " + std::to_string(std::stoi(folder.Read("pid"))) + ")"));
    EXPECT_EQ(nlohmann::json::parse(folder.Read("report"))["messages"][0]["code"], "run.folder-in-use");
    EXPECT_FALSE(folder.Has("game/units/a/a.mdl"));
    EXPECT_EQ(Export("b", "--wait 0").exitCode, 0);

    Shell("(sleep 0.5; kill -CONT $(cat pid)) &");
    const eProgramResult waiting = Export("a", "--wait 60");
    EXPECT_EQ(waiting.exitCode, 0);
    EXPECT_THAT(waiting.errors, HasSubstr("this run waits"));
    EXPECT_THAT(folder.Read("first"), HasSubstr(" 0 errors"));
    const std::size_t files = FilesIn("game/units/b");
    EXPECT_EQ(FilesIn("game/units/a"), files);

    StopInTheMiddle();
    Shell("kill -KILL $(cat pid)");
    const eProgramResult next = Export("a", "--wait 0");
    EXPECT_EQ(next.exitCode, 0);
    EXPECT_THAT(next.errors, Not(HasSubstr("waits")));
    EXPECT_EQ(FilesIn("game/units/a"), files);
}

// Would catch: options that are half of one run and half of another, or lost.
TEST_F(Locks, KeepOptionsWholeThatManyStore) {
    const std::string store =
        ZYR_PROGRAM " options exportMesh=$((i % 2)) --config config > /dev/null || exit 1";
    EXPECT_EQ(Shell("for i in 1 2 3 4 5 6 7 8 9 10; do (" + store + ") & done; wait"), 0);
    EXPECT_EQ(folder.Read("config/zyrexport.cfg").size(), 3106u);
    EXPECT_EQ(FilesIn("config"), 1u);
}

}  // namespace
