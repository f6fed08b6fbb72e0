#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "support/environment.h"
#include "support/pictures.h"
#include "support/program.h"
#include "support/temp_folder.h"

namespace {

using testing::HasSubstr;
using testing::Not;

std::string Painted(const std::string& model, const std::string& picture) {
    return R"({"scene": 1, "materials": {"m": {"type": "standard", "name": "m", "maps": {"diffuse": {"map": {
        "type": "bitmap", "file": ")" +
           picture + R"("}}}}}, "nodes": [{"name": "root", "properties": ["Model=)" + model +
           R"("], "object": {"type": "helper"}, "children": [{"name": "part", "properties": ["Poly"],
        "material": "m", "object": {"type": "box", "width": 1, "length": 2, "height": 3}}]}]})";
}

class Batch : public testing::Test {
protected:
    Batch() {
        folder.MakeFolder("game");
        folder.Write("art/wall.bmp", support::Bmp({8, 8, 3, std::vector<std::uint8_t>(192)}));
        folder.Write("art/a's b/a.scene.json", Painted("units/a", "../wall.bmp"));
        folder.Write("art/b.scene.json", Painted("units/b", "wall.bmp"));
        folder.Write("art/c.scene.json", Painted("units/c", "gone.bmp"));
        folder.Write("art/.old/d.scene.json", Painted("units/a", "wall.bmp"));
    }

    support::eProgramResult Run(const std::string& words, const std::string& flags = "--keep-going") {
        return support::RunProgram(folder, "batch " + words + " --resource-root '" + (folder / "game") +
                                               "' --config '" + (folder / "config") + "' --build '" +
                                               (folder / "build") + "' " + flags);
    }
    std::string Art() const { return "'" + (folder / "art") + "'"; }
    nlohmann::json Summary() const { return nlohmann::json::parse(folder.Read("build/summary.json")); }

    support::eTempFolder folder;
};

// Would catch: a scene that is exported for nothing, or not although its picture, one that was missing, a
// flag or a file of its own has changed.
TEST_F(Batch, ExportsWhatIsOutOfDate) {
    EXPECT_THAT(Run(Art()).output, HasSubstr("3 scenes: 3 exported, 0 up to date, 0 not exported"));
    EXPECT_TRUE(folder.Has("game/units/a/a.mdl") && folder.Has("game/units/a/wall.bmp"));
    EXPECT_FALSE(folder.Has("config/zyrexport.cfg"));
    EXPECT_THAT(Run(Art(), "--language ru").output,
                HasSubstr("3 сцены: 0 экспортировано, 3 без изменений, 0 не экспортировано\n"));
    folder.Write("art/wall.bmp", support::Bmp({4, 4, 3, std::vector<std::uint8_t>(48)}));
    EXPECT_THAT(Run(Art()).output, HasSubstr("2 exported, 1 up to date"));
    folder.Write("art/gone.bmp", support::Bmp({4, 4, 3, std::vector<std::uint8_t>(48)}));
    EXPECT_THAT(Run("'" + (folder / "art/**/?.scene.json") + "'").output,
                HasSubstr("1 exported, 2 up to date"));
    EXPECT_TRUE(folder.Has("game/units/c/gone.bmp"));
    std::filesystem::remove(folder / "game/units/b/b.mdl");
    EXPECT_THAT(Run(Art()).output, HasSubstr("1 exported, 2 up to date"));
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder / "build")) {
        if (file.path().filename() == "report.json") {
            std::ofstream(file.path()) << R"({"exit": 0, "files": [{}]})";
        }
    }
    EXPECT_THAT(Run(Art()).output, HasSubstr("3 exported, 0 up to date"));
    EXPECT_THAT(Run(Art(), "--no-animation").output, HasSubstr("3 exported, 0 up to date"));
}

// Would catch: two scenes that write over one another, a broken scene that stops the others or goes untold,
// flags of single scenes that are lost, and a list with a slip that is taken all the same.
TEST_F(Batch, TellsConflictsAndFaultsByScene) {
    folder.Write("art/e.scene.json", Painted("Units/B", "wall.bmp"));
    const support::eProgramResult conflict = Run(Art());
    EXPECT_EQ(conflict.exitCode, 2);
    EXPECT_THAT(conflict.errors, HasSubstr("game/units/b is written by 2 scenes:\n"));
    EXPECT_FALSE(folder.Has("game/units"));
    folder.Write("art/e.scene.json",
                 R"({"scene": 1, "nodes": [{"name": "root", "object": {"type": "helper"}}]})");
    folder.Write("art/b.scene.json", "{");
    folder.Write("list.json", R"({"schema": 1, "scenes": ["art/b.scene.json", "art/a's b", "art/c.scene.json",
        {"scene": "art/e.scene.json", "flags": ["--as-model", "test/e"]}]})");
    const support::eProgramResult faulty = Run("'" + (folder / "list.json") + "'");
    EXPECT_EQ(faulty.exitCode, 1);
    EXPECT_THAT(faulty.output, HasSubstr("4 scenes: 3 exported, 0 up to date, 1 not exported"));
    EXPECT_TRUE(folder.Has("game/test/e/e.mdl"));
    EXPECT_EQ(Summary()["scenes"][0]["scene"], folder / "art/b.scene.json") << "the worst comes first";
    folder.Write("list.json", R"({"schema": 1, "flag": [], "scenes": ["art/none.glb"]})");
    const support::eProgramResult slip = Run("'" + (folder / "list.json") + "'", "--language ru");
    EXPECT_EQ(slip.exitCode, 2);
    EXPECT_THAT(slip.errors, HasSubstr("/flag: "));
    EXPECT_THAT(slip.errors, HasSubstr("art/none.glb: такого файла или папки нет\n"));
}

// A farm whose tasks run at once, but for the second one, which is lost, and whose queue is a file.
constexpr const char* kSbatch = R"sh(#!/bin/sh
cd "$(dirname "$0")" && echo called >> calls
for word; do case $word in --array=1-*) tasks=${word#--array=1-};; esac; script=$word; done
[ -n "$tasks" ] || { sh "$script" > closing.log 2>&1; echo '8;cluster'; exit; }
for task in 1 3; do [ $task -gt $tasks ] || SLURM_ARRAY_TASK_ID=$task sh "$script"; done
echo 7
)sh";

class Farm : public Batch {
protected:
    Farm() {
        folder.Write("bin/sbatch", kSbatch);
        folder.Write("bin/squeue", "#!/bin/sh\ncat " + (folder / "queue"));
        for (const char* name : {"bin/sbatch", "bin/squeue"}) {
            std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
        }
        support::SetEnvironment("PATH", ((folder / "bin") + ":" + path).c_str());
    }
    ~Farm() override { support::SetEnvironment("PATH", path.c_str()); }

    const std::string path = std::getenv("PATH");
};

// Would catch: work that is handed over for nothing or gets lost with its task, reports that nobody gathers,
// a farm that is asked for its state and says the wrong one, two that work on one folder.
TEST_F(Farm, ExportsWhatIsOutOfDate) {
    const std::string flags = "--engine slurm --tasks 3";
    const support::eProgramResult first = Run(Art(), flags);
    EXPECT_EQ(first.exitCode, 0) << first.errors;
    EXPECT_THAT(first.output, HasSubstr("3 scenes: 3 exported, 0 up to date, 0 not exported"));
    EXPECT_THAT(folder.Read("bin/closing.log"), HasSubstr("2 scenes were exported by tasks\n"));
    EXPECT_EQ(Summary()["scenes"].size(), 3u);
    folder.Write("bin/calls", "");
    EXPECT_THAT(Run(Art(), flags).output, HasSubstr("0 exported, 3 up to date"));
    EXPECT_EQ(folder.Read("bin/calls"), "");
    folder.Write("art/wall.bmp", support::Bmp({4, 4, 3, std::vector<std::uint8_t>(48)}));
    EXPECT_THAT(Run(Art(), flags + " --no-wait").output, HasSubstr("The farm works on 2 scenes"));
    EXPECT_THAT(Run("", "--state").output, HasSubstr("2 exported, 1 up to date"));

    std::filesystem::remove(folder / "build/slurm/end");
    folder.Write("queue", "7 RUNNING\n7 PENDING\n8 PENDING\n");
    const support::eProgramResult atWork = Run("", "--state");
    EXPECT_EQ(atWork.exitCode, 6);
    EXPECT_THAT(atWork.output, HasSubstr("tasks (job 7): 1 PENDING, 1 RUNNING; closing job (8): 1 PENDING"));
    EXPECT_EQ(Run(Art()).exitCode, 2);
    folder.Write("queue", "");
    EXPECT_EQ(Run("", "--state").exitCode, 1);
    EXPECT_THAT(Run(Art()).output, HasSubstr("0 exported, 3 up to date"));
}

}  // namespace
