// Whether a comparison of written files tells what has changed in them, and nothing else.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "support/pictures.h"
#include "support/program.h"

namespace {

using nlohmann::json;
using support::eProgramResult;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

constexpr const char* kScene = R"({"scene": 1, "range": [0, 20],
    "materials": {"wood": {"type": "standard", "name": "wood", "maps": {"diffuse": {"map": {"type": "bitmap", "file": "wood.tga"}}}}},
    "nodes": [{"name": "cart", "properties": ["Model=units/cart", "animation=roll,all,0-20", "Hold=one two"],
        "object": {"type": "helper"}, "children": [
        {"name": "bed", "properties": ["Poly", "IKType=revolute"], "material": "wood", "transform": {"position": [0, 0, 1]},
         "object": {"type": "box", "width": 1, "length": 2, "height": 3}, "children": [
            {"name": "lid", "transform": {"position": [0, 1, 0]}, "object": {"type": "helper"},
             "keys": [{"frame": 0, "position": [0, 1, 0]}, {"frame": 20, "position": [0, 1, 2]}]},
            {"name": "bed_vol", "properties": ["Volume=armor", "bullet"], "object": {"type": "box", "width": 1, "length": 2, "height": 3}}]},
        {"name": "yard", "properties": ["Area"], "object": {"type": "box", "width": 4, "length": 5, "height": 1}},
        {"name": "step", "properties": ["SupportPoint"], "transform": {"position": [3, 0, 0]}, "object": {"type": "helper"}}]}]})";

std::string With(std::string text, const std::string& before, const std::string& after) {
    EXPECT_NE(text.find(before), std::string::npos) << before;
    return text.replace(text.find(before), before.size(), after);
}

class Diff : public testing::Test {
protected:
    Diff() { Export("old", kScene, 1); }

    void Export(const std::string& name, const std::string& scene, int day, std::uint8_t shade = 1) const {
        folder.Write("art/cart.scene.json", scene);
        folder.Write("art/wood.tga", support::Tga({2, 1, 3, {shade, 2, 3, 4, 5, 6}}));
        ::setenv("SOURCE_DATE_EPOCH", std::to_string(86400 * day).c_str(), 1);
        const eProgramResult result =
            Run("export '" + (folder / "art/cart.scene.json") + "' --resource-root '" +
                (folder / (name + "/game")) + "' --config '" + (folder / "config") + "'");
        ::unsetenv("SOURCE_DATE_EPOCH");
        EXPECT_EQ(result.exitCode, 0) << result.errors;
    }
    eProgramResult Run(const std::string& arguments) const { return support::RunProgram(logs, arguments); }
    std::string Paths(const std::string& below = "") const {
        return "'" + (folder / ("old/game" + below)) + "' '" + (folder / ("new/game" + below)) + "' ";
    }
    // What is told of the new tree: "file: thing: what" of each change, and what stands behind it.
    std::set<std::string> Changes(const std::string& flags = {}) const {
        const eProgramResult result = Run("diff " + Paths() + "--json " + flags);
        std::set<std::string> told;
        const json said = json::parse(result.output);
        for (const json& file : said.at("files")) {
            const std::string path = fs::path(file.at("path").get<std::string>()).filename();
            for (const json& change : file.at("changes")) {
                told.insert(path + ": " + change.at("of").get<std::string>() + ": " +
                            change.at("what").get<std::string>());
            }
            if (file.at("changes").empty()) {
                told.insert(path + ": " + file.at("state").get<std::string>());
            }
        }
        EXPECT_EQ(result.exitCode, said.at("same") ? 0 : 1) << result.errors;
        return told;
    }

    support::eTempFolder folder;
    support::eTempFolder logs;
};

// Catches the time of an export that counts as a change, and one that is passed over in silence.
TEST_F(Diff, TellsWhereOnlyTheHeadDiffers) {
    Export("new", kScene, 1);
    EXPECT_THAT(Changes(), IsEmpty());
    Export("new", kScene, 2);
    EXPECT_THAT(Changes(), ElementsAre("cart.mdl: head"));
    EXPECT_THAT(Run("diff " + Paths()).output, HasSubstr("only the comment line with time and user"));
    const std::string text = folder.Read("new/game/units/cart/cart.mdl");
    folder.Write("new/game/units/cart/cart.mdl", With(text, ";File:", ";File: elsewhere"));
    EXPECT_THAT(Changes(), ElementsAre("cart.mdl: comments"));
}

// Catches a change that is lost, told of another thing, or told as more than it is.
TEST_F(Diff, TellsEachChangeByItsMeaning) {
    const auto after = [&](const char* before, const char* now) {
        fs::remove_all(folder / "new");
        Export("new", With(kScene, before, now), 1);
        return Changes();
    };
    EXPECT_THAT(after(R"("position": [0, 0, 1])", R"("position": [0.05, 0, 1])"),
                ElementsAre("anim.txt: : content", "cart.mdl: bone bed: moved",
                            "roll.anm: bone bed: moved, farthest in frame 0"));
    EXPECT_THAT(Run("diff " + Paths()).output, HasSubstr("bone bed: moved by 0.05 m: 0 0 1 -> 0.05 0 1\n"));
    EXPECT_THAT(Run("diff --language ru " + Paths()).output,
                HasSubstr("кость bed: сдвиг на 0.05 м: 0 0 1 -> 0.05 0 1\n"));
    EXPECT_THAT(Changes("--tolerance mm=51"),
                ElementsAre("anim.txt: equal", "cart.mdl: equal", "roll.anm: equal"));
    EXPECT_THAT(after("IKType=revolute", "IKType=socket"), ElementsAre("cart.mdl: bone bed: joint"));
    EXPECT_THAT(after("animation=roll,all,0-20", "animation=roll,all,0-12"),
                ElementsAre("anim.txt: : content", "roll.anm: : frames"));
    EXPECT_THAT(after(R"("position": [0, 1, 2])", R"("position": [0, 1, 3])"),
                ElementsAre("anim.txt: : content", "roll.anm: bone lid: moved, farthest in frame 20"));
    EXPECT_THAT(after(R"("name": "bed", "prop)", R"("name": "tub", "prop)"),
                testing::IsSupersetOf({"cart.mdl: bone bed: removed", "cart.mdl: bone lid: hangs from"}));
    EXPECT_THAT(after("Volume=armor", "Volume=glass"), ElementsAre("cart.def: volume bed: component"));
    EXPECT_THAT(after("Area", "Obstacle"), ElementsAre("cart.mdl: zone yard: kind"));
    EXPECT_THAT(after(R"("position": [3, 0, 0])", R"("position": [5, 0, 0])"),
                ElementsAre("cart.mdl: support points of cart: point"));
    EXPECT_THAT(after("Hold=one two", "Hold=one"), ElementsAre("cart.def: entity: structure_bone/hold"));
    EXPECT_THAT(after(R"("bed_vol")", R"("hull_vol")"),
                ElementsAre("cart.def: volume bed: removed", "cart.def: volume hull: added",
                            "cart.mdl: volume bed: removed", "cart.mdl: volume hull: added"));
    EXPECT_THAT(after(R"("material": "wood", )", ""), testing::Contains("wood.tga: removed"));
}

// Catches meshes that are only told as other bytes, and triangles that count as lost because they are
// numbered otherwise.
TEST_F(Diff, TellsMeshesByTheirTrianglesAndVertices) {
    Export("new",
           With(kScene, R"("width": 1, "length": 2, "height": 3}, "children")",
                R"("width": 1.25, "length": 2, "height": 3}, "children")"),
           1);
    EXPECT_THAT(Changes(), ElementsAre(".mesh: mesh bed: highest corner of the bounds",
                                       ".mesh: mesh bed: lowest corner of the bounds",
                                       ".mesh: mesh bed: vertices moved"));
    EXPECT_THAT(Run("diff " + Paths()).output, HasSubstr("vertices moved, 24, by up to 0.125 m"));
    const std::string cube =
        R"({"type": "mesh", "vertices": [[0, 0, 0], [4, 0, 0], [0, 1, 0], [0, -1, 0]], "faces": )";
    const std::string box = R"({"type": "box", "width": 1, "length": 2, "height": 3}, "children")";
    const std::string tail =
        R"(, "maps": {"1": {"vertices": [[0, 0, 0]], "faces": [[0, 0, 0], [0, 0, 0]]}}}, "children")";
    Export("old", With(kScene, box, cube + "[[0, 1, 2], [1, 0, 3]]" + tail), 1);
    Export("new", With(kScene, box, cube + "[[3, 1, 0], [2, 0, 1]]" + tail), 1);
    EXPECT_THAT(Changes(), testing::AnyOf(IsEmpty(), ElementsAre(".mesh: equal")));
    Export("new",
           With(kScene, box,
                cube + "[[3, 1, 0], [0, 1, 2], [2, 3, 0]]" +
                    With(tail, "[0, 0, 0], ", "[0, 0, 0], [0, 0, 0], ")),
           1);
    EXPECT_THAT(Changes(),
                testing::IsSupersetOf({".mesh: mesh bed: triangles", ".mesh: mesh bed: triangles are new"}));
}

TEST_F(Diff, TellsPicturesInDecibels) {
    Export("new", kScene, 1, 200);
    EXPECT_THAT(Changes(), ElementsAre("wood.tga: : picture"));
    EXPECT_THAT(Run("diff " + Paths("/units/cart/wood.tga")).output, HasSubstr("picture by 11.1"));
    EXPECT_THAT(Changes("--tolerance db=5"), ElementsAre("wood.tga: equal"));
}

// Catches a container that looks otherwise than its folder, and trouble that passes for a difference.
TEST_F(Diff, TakesContainersAndSingleFiles) {
    Export("new", With(kScene, "IKType=revolute", "IKType=socket"), 1);
    ASSERT_EQ(Run("pak '" + (folder / "new/game") + "' '" + (folder / "new.pak") + "'").exitCode, 0);
    const std::string old = "diff '" + (folder / "old/game") + "' '";
    EXPECT_EQ(Run(old + (folder / "new.pak") + "'").output, Run("diff " + Paths()).output);
    EXPECT_EQ(
        Run("diff '" + (folder / "old/game/units") + "' '" + (folder / "new.pak") + ":/units/'").exitCode, 1);
    const eProgramResult one =
        Run("diff /dev/null '" + (folder / "old/game/units/cart/cart.mdl") + "' --label units/cart/cart.mdl");
    EXPECT_EQ(one.exitCode, 1);
    EXPECT_EQ(one.output, "units/cart/cart.mdl: added\n1 added\n");
    EXPECT_EQ(Run(old + (folder / "old/game/units/cart/cart.mdl") + "'").exitCode, 2);
    EXPECT_EQ(Run(old + (folder / "nowhere") + "'").exitCode, 2);
    folder.Write("new/game/units/cart/roll.anm", "EANM");
    const eProgramResult broken = Run("diff " + Paths());
    EXPECT_EQ(broken.exitCode, 2);
    EXPECT_THAT(broken.errors, HasSubstr("roll.anm: "));
    EXPECT_THAT(broken.output, HasSubstr("bone bed: joint")) << "the others are told all the same";
}

}  // namespace
