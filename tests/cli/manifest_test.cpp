// What a run lists of its files, and whether a later look at them tells what has become of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "support/pictures.h"
#include "support/program.h"

namespace {

using nlohmann::json;
using support::eProgramResult;
using testing::HasSubstr;
namespace fs = std::filesystem;

constexpr const char* kScene = R"({"scene": 1, "materials": {
    "wood": {"type": "standard", "name": "wood", "maps": {"diffuse": {"map": {"type": "bitmap", "file": "доска.tga"}}}},
    "tin": {"type": "standard", "name": "tin", "maps": {"diffuse": {"map": {"type": "bitmap", "file": "tin.tga"}}}}},
    "nodes": [{"name": "cart", "properties": ["Model=units/cart"], "object": {"type": "helper"}, "children": [
        {"name": "bed", "properties": ["Poly"], "material": "wood", "object": {"type": "box", "width": 1, "length": 2, "height": 3}},
        {"name": "lid", "properties": ["Poly"], "material": "tin", "object": {"type": "box", "width": 1, "length": 2, "height": 3}}]}]})";

class Manifest : public testing::Test {
protected:
    Manifest() {
        folder.Write("дом/art/cart.scene.json", kScene);
        Paint("доска.tga", 1);
        Paint("tin.tga", 2);
        const eProgramResult result =
            Run("export '" + (folder / "дом/art/cart.scene.json") + "' --resource-root '" +
                (folder / "дом/Игра") + "' --config '" + (folder / "config") + "' --manifest '" +
                (folder / "дом/cart.json") + "'");
        EXPECT_EQ(result.exitCode, 0) << result.errors;
    }
    void Paint(const std::string& name, std::uint8_t shade) const {
        folder.Write("дом/art/" + name, support::Tga({2, 1, 3, {shade, 2, 3, 4, 5, 6}}));
    }
    eProgramResult Run(const std::string& arguments) const { return support::RunProgram(logs, arguments); }
    eProgramResult Check(const std::string& flags = {}) const {
        return Run("check '" + (folder / "дом/cart.json") + "' " + flags);
    }
    // "state" by path, of the files that are not sound.
    std::map<std::string, std::string> Faults(const std::string& flags = {}) const {
        const eProgramResult result = Check("--json " + flags);
        std::map<std::string, std::string> faults;
        const json said = json::parse(result.output);
        for (const json& file : said.at("files")) {
            if (file.at("state") != "sound") {
                faults[file.at("path")] = file.at("state");
            }
        }
        EXPECT_EQ(result.exitCode, faults.empty() ? 0 : 5) << result.errors;
        EXPECT_EQ(said.at("sound"), faults.empty());
        return faults;
    }
    json File(const std::string& path) const {
        const json manifest = json::parse(folder.Read("дом/cart.json"));
        for (const json& file : manifest.at("files")) {
            if (file.at("path") == path) {
                return file;
            }
        }
        return {};
    }

    support::eTempFolder folder;
    support::eTempFolder logs;
};

// Catches a file that is not listed, one that is listed with what feeds another, and a path that only holds
// on this machine.
TEST_F(Manifest, ListsEachFileWithWhatItComesFrom) {
    const json manifest = json::parse(folder.Read("дом/cart.json"));
    EXPECT_EQ(manifest.at("root"), "Игра");
    EXPECT_EQ(manifest.at("scene"), "art/cart.scene.json");
    std::size_t written = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder / "дом/Игра")) {
        written += entry.is_regular_file() ? 1 : 0;
    }
    EXPECT_EQ(manifest.at("files").size(), written);
    const json plank = File("units/cart/доска.tga");
    EXPECT_EQ(plank.at("sources"), json({"art/cart.scene.json", "art/доска.tga"}));
    EXPECT_EQ(plank.at("materials"), json({"wood"}));
    EXPECT_EQ(plank.at("nodes"), json({"bed"}));
    EXPECT_EQ(File("units/cart/.mesh").at("nodes"), json({"bed", "lid"}));
    EXPECT_EQ(File("units/cart/.mesh").at("sources"), json({"art/cart.scene.json"}));
}

// Catches a check that is blind to what became of a file or a source, or that blames files which the source
// doesn't feed.
TEST_F(Manifest, TellsWhatIsMissingChangedOrStale) {
    EXPECT_EQ(Faults().size(), 0U);
    fs::remove(folder / "дом/Игра/units/cart/cart.mdl");
    std::string mesh = folder.Read("дом/Игра/units/cart/.mesh");
    mesh.back() ^= 1;
    folder.Write("дом/Игра/units/cart/.mesh", mesh);
    Paint("доска.tga", 9);
    std::map<std::string, std::string> expected{{"units/cart/.mesh", "changed"},
                                                {"units/cart/cart.mdl", "missing"},
                                                {"units/cart/доска.tga", "stale"}};
    EXPECT_EQ(Faults(), expected);
    EXPECT_THAT(Check().output, HasSubstr("stale: units/cart/доска.tga: доска.tga has changed\n"));
    EXPECT_THAT(Check("--language ru").output,
                HasSubstr("устарел: units/cart/доска.tga: доска.tga изменен\n"));
    expected.erase("units/cart/доска.tga");
    EXPECT_EQ(Faults("--files-only"), expected);
    folder.Write("дом/art/cart.scene.json.properties", "");
    EXPECT_EQ(Faults().at("units/cart/tin.tga"), "stale") << "properties that were not there";
}

TEST_F(Manifest, HoldsWhereItsTreeIsMoved) {
    fs::rename(folder / "дом", folder / "дача");
    const std::string manifest = folder / "дача/cart.json";
    EXPECT_EQ(Run("check '" + manifest + "'").exitCode, 0);
    fs::rename(folder / "дача/Игра", folder / "build");
    EXPECT_EQ(Run("check '" + manifest + "'").exitCode, 5);
    EXPECT_EQ(Run("check '" + manifest + "' --root '" + (folder / "build") + "'").exitCode, 0);
    fs::rename(folder / "дача/cart.json", folder / "cart.json");
    EXPECT_EQ(Run("check '" + (folder / "cart.json") + "' --root '" + (folder / "build") + "' --base '" +
                  (folder / "дача") + "'")
                  .exitCode,
              0);
}

// Catches a manifest that passes for sound because nothing of it was understood.
TEST_F(Manifest, IsRefusedWhereItIsNone) {
    const std::string whole = folder.Read("дом/cart.json");
    const auto problemOf = [&](const std::string& text) {
        folder.Write("дом/cart.json", text);
        const eProgramResult result = Check();
        EXPECT_EQ(result.exitCode, 2) << text;
        return result.errors;
    };
    EXPECT_THAT(problemOf(whole.substr(0, whole.size() / 2)),
                HasSubstr("cart.json: it is no JSON, from byte "));
    EXPECT_THAT(problemOf("{}"), HasSubstr("it is no manifest"));
    EXPECT_THAT(problemOf(R"({"schema": 1e999})"), HasSubstr("a number in it is too large"));
    json other = json::parse(whole);
    other["files"][0]["sha256"] = "ABC";
    EXPECT_THAT(problemOf(other.dump()), HasSubstr("/files/0/sha256: "));
    other["schema"] = 2;
    EXPECT_THAT(problemOf(other.dump()), HasSubstr("its schema is 2"));
    EXPECT_EQ(Run("check nowhere.json").exitCode, 2);
}

}  // namespace
