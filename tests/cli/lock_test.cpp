#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "platform/user.h"
#include "support/pictures.h"
#include "support/program.h"
#include "support/temp_folder.h"

namespace {

using support::eProgramResult;
using testing::HasSubstr;
using testing::Not;

std::string Model(const std::string& folder) {
    return R"({"name": "root", "properties": ["Model=units/)" + folder +
           R"("], "object": {"type": "helper"}, "children": [{"name": "part", "properties": ["Poly"], "object":
        {"type": "box", "width": 1, "length": 2, "height": 3}}]})";
}

std::string Scene(const std::string& models) {
    return R"({"scene": 1, "nodes": [)" + models + "]}";
}

class Locks : public testing::Test {
protected:
    Locks() {
        folder.Write("a.scene.json", Scene(Model("a")));
        folder.Write("b.scene.json", Scene(Model("b")));
        folder.Write("az.scene.json", Scene(Model("a") + ", " + Model("z")));
    }
    ~Locks() override { Shell("rm -f hold; [ ! -e pid ] || kill -KILL $(cat pid) 2> /dev/null"); }

    int Shell(const std::string& words) const {
        return std::system(("cd '" + folder.Path() + "' || exit 1\n" + words).c_str());
    }
    std::string Words(const std::string& scene) const {
        return "export '" + (folder / scene) + ".scene.json' --resource-root '" + (folder / "game") +
               "' --config '" + (folder / "config") + "' ";
    }
    // Another process that has the folder of "a" and waits for that of "z" as long as the file "hold" is
    // there.
    void BeginOther() const {
        folder.MakeFolder("game/units/z");
        Shell(R"(touch hold; rm -f held
            flock game/units/z/.zyrexport.lock sh -c 'touch held; while [ -e hold ]; do sleep 0.05; done' &
            until [ -e held ]; do sleep 0.02; done)");
        Shell(ZYR_PROGRAM " " + Words("az") + R"(> first 2>&1 & echo $! > pid
            until grep -q process game/units/a/.zyrexport.lock 2> /dev/null; do sleep 0.02; done)");
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

// Would catch: what a killed run has left and stays for ever, and a file that is taken from a hand, a run at
// work or another machine.
TEST_F(Locks, ClearAwayWhatKilledRunsHaveLeft) {
    folder.Write("art/wall.bmp", support::Bmp({8, 8, 3, std::vector<std::uint8_t>(192)}));
    folder.Write("c.scene.json", R"({"scene": 1, "materials": {"m": {"type": "standard", "name": "m", "maps":
        {"diffuse": {"map": {"type": "bitmap", "file": "art/wall.bmp"}}}}}, "nodes": [
        {"name": "root", "properties": ["Model=c", "Poly"], "material": "m", "object":
            {"type": "box", "width": 1, "length": 2, "height": 3}}]})");
    const std::string flags = "--common-source '" + (folder / "art/") + "' --common-target tex/";
    const std::string self = platform::ProcessName();
    const std::string family = self.substr(0, self.rfind('-') + 1);
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    for (int run = 0; run < 2; ++run) {
        for (const char* name : {"c/Walk.anm.tmp", "c/notes.tmp"}) {
            folder.Write(std::string("game/") + name, "left");
        }
        const std::string ended = family + std::to_string(child);
        for (const std::string& process : {ended, "x" + ended, self, family + "1"}) {
            folder.Write("game/tex/old.bmp." + process + ".tmp", "left");
        }
        std::filesystem::remove(folder / "game/tex/wall.bmp");
        EXPECT_EQ(Export("c", flags).exitCode, 0);
        EXPECT_TRUE(folder.Has("game/tex/wall.bmp"));
        EXPECT_FALSE(folder.Has("game/c/Walk.anm.tmp"));
        EXPECT_TRUE(folder.Has("game/c/notes.tmp"));
        EXPECT_EQ(FilesIn("game/tex"), 4u) << "one of the four has ended here";
    }
}

// Would catch: two runs that write over one another, a run that does not say whose the folder is, one that is
// held up by a run elsewhere, a wait without end or for a run that is gone, a lock that stays.
TEST_F(Locks, LetOneRunAtATimeWriteAFolder) {
    BeginOther();
    const eProgramResult refused = Export("a", "--lock-wait 0 --report '" + (folder / "report") + "'");
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_THAT(refused.errors, HasSubstr("(process " + std::to_string(std::stoi(folder.Read("pid"))) + ")"));
    EXPECT_EQ(nlohmann::json::parse(folder.Read("report"))["messages"][0]["code"], "run.folder-in-use");
    EXPECT_EQ(FilesIn("game/units/a"), 1u) << "the lock alone";
    EXPECT_EQ(Export("b", "--lock-wait 0").exitCode, 0);

    Shell("(sleep 0.5; rm hold) &");
    const eProgramResult waiting = Export("a", "--lock-wait 60");
    EXPECT_EQ(waiting.exitCode, 0);
    EXPECT_THAT(waiting.errors, HasSubstr("this run waits"));
    EXPECT_EQ(
        Shell("for i in $(seq 100); do grep -q '2 models written' first && exit; sleep 0.05; done; exit 1"),
        0);
    const std::size_t files = FilesIn("game/units/b");
    EXPECT_EQ(FilesIn("game/units/a"), files);

    BeginOther();
    Shell("kill -KILL $(cat pid)");
    const eProgramResult next = Export("a", "--lock-wait 0");
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
