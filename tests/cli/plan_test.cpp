// What is told of an export before it writes anything.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "support/pictures.h"
#include "support/program.h"
#include "support/source_tree.h"

namespace {

using nlohmann::json;
using support::eProgramResult;
using testing::HasSubstr;
namespace fs = std::filesystem;

// Three faces meet in one edge, which the order of the triangles has a word about.
constexpr const char* kScene = R"({"scene": 1, "range": [0, 9],
    "materials": {
        "wood": {"type": "standard", "name": "wood", "maps": {"diffuse": {"map": {"type": "bitmap", "file": "wood.tga"}}}},
        "tin": {"type": "standard", "name": "tin"}},
    "nodes": [{"name": "cart", "properties": ["Model=units/cart", "animation=roll,all,0-9"],
        "object": {"type": "helper"}, "children": [
        {"name": "bed", "properties": ["Poly"], "material": "wood",
         "object": {"type": "mesh", "vertices": [[0, 0, 0], [4, 0, 0], [0, 1, 0], [0, -1, 0], [0, 0, 1]],
                    "faces": [[0, 1, 2], [0, 1, 3], [0, 1, 4]],
                    "maps": {"1": {"vertices": [[0, 0, 0]], "faces": [[0, 0, 0], [0, 0, 0], [0, 0, 0]]}}}},
        {"name": "lamp", "properties": ["Poly"], "material": "tin", "transform": {"position": [0, 2, 1]},
         "object": {"type": "box", "width": 1, "length": 2, "height": 3}}]}]})";

// Every file and folder below, with its last-write time and size.
using eListing = std::map<std::string, std::pair<fs::file_time_type, std::uintmax_t>>;

class Plan : public testing::Test {
protected:
    Plan() {
        folder.Write("art/cart.scene.json", kScene);
        folder.Write("art/wood.tga", support::Tga({2, 1, 3, {1, 2, 3, 4, 5, 6}}));
        folder.MakeFolder("out");
    }

    eProgramResult Run(const std::string& command, int day, const std::string& flags = {}) const {
        ::setenv("SOURCE_DATE_EPOCH", std::to_string(86400 * day).c_str(), 1);
        const eProgramResult result = support::RunProgram(
            logs, command + " '" + (folder / "art/cart.scene.json") + "' --resource-root '" +
                      (folder / "out/Game") + "' --config '" + (folder / "out/Config") + "' " + flags);
        ::unsetenv("SOURCE_DATE_EPOCH");
        return result;
    }
    // "state rule" and sizes by path below the resource root; the plan has touched nothing.
    std::map<std::string, json> Files(const std::string& flags = {}) const {
        const eListing before = List();
        const eProgramResult result = Run("plan", 2, "--json " + flags);
        EXPECT_EQ(List(), before);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        std::map<std::string, json> files;
        const json plan = json::parse(result.output).at(0);
        for (const json& file : plan.at("files")) {
            const std::string path = file.at("path");
            EXPECT_THAT(path, testing::StartsWith(folder / "out/Game/units/cart/"));
            files[path.substr((folder / "out/Game/units/cart/").size())] = file;
        }
        return files;
    }
    static std::map<std::string, std::string> States(const std::map<std::string, json>& files) {
        std::map<std::string, std::string> states;
        for (const auto& [name, file] : files) {
            states[name] = file.at("state").get<std::string>() + (file.at("differsInHead") ? "*" : "");
        }
        return states;
    }
    eListing List() const {
        eListing listing;
        for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
            listing[entry.path()] = {entry.last_write_time(), entry.is_directory() ? 0 : entry.file_size()};
        }
        return listing;
    }

    support::eTempFolder folder;
    support::eTempFolder logs;
};

// Would catch: a file that the plan forgets, and any write on the way, be it a folder, the options or a time.
TEST_F(Plan, SaysBeforeAnExportWhatItWillWrite) {
    const auto planned = Files();
    for (const auto& [name, file] : planned) {
        EXPECT_EQ(file.at("state"), "new") << name;
        EXPECT_EQ(file.at("before"), nullptr) << name;
    }
    EXPECT_EQ(planned.at(".mesh").at("nodes"), json({"bed", "lamp"}));
    EXPECT_EQ(planned.at(".material").at("materials"), json({"wood", "tin"}));
    EXPECT_EQ(planned.at("roll.anm").at("nodes"), json({"cart", "bed", "lamp"}));
    EXPECT_EQ(planned.at("wood.tga").at("rule"), "target-missing");
    EXPECT_EQ(planned.at("wood.tga").at("nodes"), json({"bed"}));
    EXPECT_EQ(planned.at("tex1_0.bmp").at("rule"), "plain-colour");

    ASSERT_EQ(Run("export", 1).exitCode, 0);
    std::map<std::string, std::uintmax_t> written;
    for (const auto& entry : fs::directory_iterator(folder / "out/Game/units/cart")) {
        written[entry.path().filename()] = entry.file_size();
    }
    EXPECT_EQ(written.size(), planned.size());
    for (const auto& [name, file] : planned) {
        EXPECT_EQ(file.at("after"), written[name]) << name;
    }
}

TEST_F(Plan, TellsWhatHasChangedSinceTheLastExport) {
    ASSERT_EQ(Run("export", 1).exitCode, 0);
    std::map<std::string, std::string> expected{
        {".material", "same"}, {".mesh", "same"},    {"anim.txt", "same"},   {"cart.def", "kept"},
        {"cart.mdl", "same*"}, {"roll.anm", "same"}, {"tex1_0.bmp", "same"}, {"wood.tga", "kept"}};
    EXPECT_EQ(States(Files()), expected);

    folder.Write("art/wood.tga", support::Tga({2, 1, 3, {9, 2, 3, 4, 5, 6}}));
    expected["wood.tga"] = "changed";
    const auto files = Files();
    EXPECT_EQ(States(files), expected);
    EXPECT_EQ(files.at("wood.tga").at("rule"), "source-newer");

    std::string still = kScene;
    still.replace(still.find(R"(, "animation=roll,all,0-9")"), 26, "");
    folder.Write("art/cart.scene.json", still);
    expected["anim.txt"] = "deleted";
    expected["roll.anm"] = "leftover";
    EXPECT_EQ(States(Files()), expected);
    folder.Write("out/Game/units/cart/roll.anm.tmp", "broken off");
    expected["roll.anm.tmp"] = "deleted";
    expected.erase("anim.txt");
    expected.erase("roll.anm");
    EXPECT_EQ(States(Files("--no-animation")), expected) << "what an option leaves out is no leftover";

    const std::string text = Run("plan", 2).output;
    EXPECT_THAT(text, HasSubstr("plan: 0 new, 1 changed, 4 same, 1 kept, 2 deleted, 1 leftover\n"));
    EXPECT_THAT(text, HasSubstr("same but for the comment line with time and user"));

    const std::string russian = Run("plan", 2, "--language ru").output;
    EXPECT_THAT(russian,
                HasSubstr("план: 0 новых, 1 изменен, 4 прежних, 1 не тронут, 2 удалено, 1 лишний\n"));
    EXPECT_THAT(russian, HasSubstr("текстура для wood: картинка новее файла ("));
    EXPECT_THAT(russian, HasSubstr("скелет модели cart: 3 кости; отличается только строка комментария"));
    EXPECT_THAT(russian, Not(testing::ContainsRegex("[a-z] [a-z]")));
}

// Would catch: a plan that promises files where the export ends with an error.
TEST_F(Plan, EndsAsTheExportWould) {
    folder.Write("out/Game/units", "a file where a folder is to be");
    const eListing before = List();
    const eProgramResult plan = Run("plan", 1);
    EXPECT_EQ(List(), before);
    const eProgramResult written = Run("export", 1);
    EXPECT_EQ(plan.exitCode, 1);
    EXPECT_EQ(written.exitCode, 1);
    EXPECT_EQ(plan.errors, written.errors);
}

}  // namespace
