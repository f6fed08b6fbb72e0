// The program on the command line of Windows.
#include <gtest/gtest.h>

#include "desktop/win32/child_program.h"
#include "support/temp_folder.h"

namespace {

using desktop::eChildProgram;

constexpr const char* kArm = R"({"scene": 1, "nodes": [
    {"name": "root", "properties": ["Model=units/arm"], "object": {"type": "helper"}}]})";

// Would catch words of the command line, or paths, that go through the code page of the system.
TEST(Program, KnowsNamesInAnyAlphabet) {
    const support::eTempFolder folder;
    folder.Write("Сцена 日本.scene.json", kArm);
    const eChildProgram program(
        "zyrexport", {"export", folder / "Сцена 日本.scene.json", "--resource-root", folder / "Игра",
                      "--config", folder / "Опции", "--report", folder / "Отчёт 日本.json"});
    EXPECT_EQ(program.WaitForEnd(), 0);
    EXPECT_TRUE(folder.Has("Игра/units/arm/arm.mdl"));
    EXPECT_TRUE(folder.Has("Опции/zyrexport.cfg"));
    EXPECT_NE(folder.Read("Отчёт 日本.json").find("/Игра/units/arm/arm.mdl\""), std::string::npos);
}

// Would catch a fence that compares what is written instead of what the system makes of it.
TEST(Program, KeepsWritesBelowTheResourceRoot) {
    const support::eTempFolder folder;
    for (const char* path : {"..\\\\beyond", "units/.. /../beyond", "con"}) {
        std::string scene = kArm;
        scene.replace(scene.find("units/arm"), 9, path);
        folder.Write("scene.scene.json", scene);
        const eChildProgram program("zyrexport", {"export", folder / "scene.scene.json", "--resource-root",
                                                  folder / "game", "--config", folder / "config"});
        EXPECT_NE(program.WaitForEnd(), -1) << path;
        EXPECT_FALSE(folder.Has("beyond")) << path;
    }
}

TEST(Program, RefusesFilesThatAreNoModules) {
    const support::eTempFolder folder;
    folder.Write("scene.scene.json", kArm);
    folder.Write("text.dle", "no module");
    for (const std::string& module : {folder / "absent.dle", folder / "text.dle"}) {
        const eChildProgram program(
            "zyrexport", {"export", folder / "scene.scene.json", "--resource-root", folder / "game",
                          "--config", folder / "config", "--plugin", module});
        EXPECT_EQ(program.WaitForEnd(), 2) << module;
        EXPECT_FALSE(folder.Has("game/units"));
    }
}

}  // namespace
