#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "base/ansi.h"
#include "support/gltf_text.h"
#include "support/pictures.h"
#include "support/program.h"
#include "support/source_tree.h"
#include "support/temp_folder.h"

namespace {

using support::eProgramResult;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

constexpr const char* kArm = R"({"scene": 1, "nodes": [
    {"name": "root", "properties": ["Model=units/arm"], "object": {"type": "helper"}, "children": [
        {"name": "arm", "object": {"type": "helper"}, "transform": {"position": [0, 0, 1]}}]}]})";

class Program : public testing::Test {
protected:
    Program() { folder.MakeFolder("game"); }

    eProgramResult Run(const std::string& arguments) { return support::RunProgram(folder, arguments); }
    eProgramResult Export(const std::string& scene, const std::string& flags = {}) {
        folder.Write("scene.scene.json", scene);
        return Run("export '" + (folder / "scene.scene.json") + "' --resource-root '" + (folder / "game") +
                   "' --config '" + (folder / "config") + "' " + flags);
    }

    support::eTempFolder folder;
};

// A build farm decides by the exit status, and wrong usage must leave no trace.
TEST_F(Program, RefusesWrongUsageWithoutWriting) {
    EXPECT_EQ(Run("").exitCode, 2);
    EXPECT_EQ(Run("--help").exitCode, 0);
    EXPECT_THAT(
        Run("--version").output,
        MatchesRegex("zyrexport [0-9.]+([+][0-9]+[.]g[0-9a-f]+)?\n(commit: [0-9a-f]{12}.*\n)?compiler: .*"
                     "\nbuild: .*\nzlib: [0-9].*\ncli11: [0-9.]+\n"));
    EXPECT_EQ(Run("export").exitCode, 2);
    EXPECT_EQ(Run("explode").exitCode, 2);
    EXPECT_THAT(Run("exprot x --quiet").errors, HasSubstr("exprot: did you mean export?\n"));
    const eProgramResult slip = Export(kArm, "--no-mehs --explode");
    EXPECT_EQ(slip.exitCode, 2);
    EXPECT_THAT(slip.errors, HasSubstr("\n--no-mehs: did you mean --no-mesh?\n"));
    EXPECT_THAT(Run("exprot x --language ru").errors,
                HasSubstr("exprot: возможно, имелось в виду export?\n"));
    EXPECT_EQ(Run("export --language=ru").errors, "Не указано: SCENE\nПодробнее: --help\n");
    EXPECT_THAT(slip.errors, Not(HasSubstr("explode: ")));
    EXPECT_THAT(Export(kArm, "--silent").errors, HasSubstr("--resource-root excludes --silent"));
    EXPECT_EQ(Export(kArm, "--drive C:/tmp").exitCode, 2);
    EXPECT_EQ(Export(kArm, "--common-target ''").exitCode, 2);
    EXPECT_FALSE(folder.Has("game/units"));
    EXPECT_FALSE(folder.Has("config/zyrexport.cfg"));
}

TEST_F(Program, TellsWhatAnUnreadableSceneHas) {
    const eProgramResult missing = Run("export '" + (folder / "none.glb") + "'");
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_THAT(missing.errors, HasSubstr("none.glb"));
    const eProgramResult broken = Export(R"({"scene": 1, "nodes": [{"name": "a", "oops": 1}]})",
                                         "--report '" + (folder / "report.json") + "'");
    EXPECT_EQ(broken.exitCode, 2);
    EXPECT_THAT(broken.errors, HasSubstr("/nodes/0"));
    const auto report = nlohmann::json::parse(folder.Read("report.json"));
    EXPECT_EQ(report["exit"], 2);
    EXPECT_THAT(report["messages"][0]["text"], HasSubstr("/nodes/0"));
    EXPECT_FALSE(folder.Has("game/units"));
}

TEST_F(Program, ExportsAndReports) {
    const eProgramResult result = Export(kArm, "--report '" + (folder / "report.json") + "'");
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_THAT(result.errors, IsEmpty());
    EXPECT_THAT(folder.Read("game/units/arm/arm.mdl"), HasSubstr("{Position 0 \t 0 \t 1}"));
    const auto report = nlohmann::ordered_json::parse(folder.Read("report.json"));
    std::vector<std::string> keys;
    for (const auto& member : report.items()) {
        keys.push_back(member.key());
    }
    EXPECT_THAT(keys, ElementsAre("schema", "scene", "options", "models", "messages", "files", "cancelled",
                                  "seconds", "exit"));
    EXPECT_EQ(report["models"][0]["bones"], 2);
    EXPECT_EQ(report["exit"], 0);
    bool foundModel = false;
    for (const auto& file : report["files"]) {
        foundModel |= file["path"] == folder / "game/units/arm/arm.mdl" && file["action"] == "written" &&
                      file["bytes"] == folder.Read("game/units/arm/arm.mdl").size();
    }
    EXPECT_TRUE(foundModel);
}

// What a scene says must not lead out of the resource tree.
TEST_F(Program, KeepsWritesBelowTheResourceRoot) {
    std::string scene = kArm;
    scene.replace(scene.find("units/arm"), 9, "units/a:b/arm");
    EXPECT_EQ(Export(scene).exitCode, 0) << "a colon is a letter of a name like any other";
    EXPECT_TRUE(folder.Has("game/units/a:b/arm/arm.mdl"));
    scene.replace(scene.find("units/a:b/arm"), 13, "../beyond");
    const eProgramResult fenced = Export(scene);
    EXPECT_EQ(fenced.exitCode, 3);
    EXPECT_THAT(fenced.errors, HasSubstr("root"));
    EXPECT_FALSE(folder.Has("beyond"));
    EXPECT_EQ(Export(scene, "--no-fence").exitCode, 0);
    EXPECT_TRUE(folder.Has("beyond/beyond.mdl"));
}

TEST_F(Program, AsksForTheDriveOfAStudiosPath) {
    folder.Write("scene.scene.json", kArm);
    const std::string call =
        "export '" + (folder / "scene.scene.json") + "' --silent --config '" + (folder / "config") + "'";
    const eProgramResult refused = Run(call);
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_THAT(refused.errors, HasSubstr("--drive d=DIR"));
    const eProgramResult mapped = Run(call + " --drive D='" + folder.Path() + "'");
    EXPECT_EQ(mapped.exitCode, 0) << mapped.errors;
    EXPECT_TRUE(folder.Has("thegame/units/arm/arm.mdl"));
}

TEST_F(Program, ShowsErrorsOfTheSceneAndGoesOn) {
    const eProgramResult empty = Export(R"({"scene": 1})");
    EXPECT_EQ(empty.exitCode, 3);
    EXPECT_THAT(empty.errors, HasSubstr("error: Nothing to export!\n  Perhaps the root bone is hidden."));
    EXPECT_TRUE(folder.Has("config/zyrexport.cfg"));
    EXPECT_THAT(Export(kArm, "--static-frame 1000").errors, HasSubstr("advice: "));
    const eProgramResult far = Export(kArm, "--static-frame 1000 --quiet");
    EXPECT_EQ(far.exitCode, 0);
    EXPECT_THAT(far.output, IsEmpty());
    EXPECT_THAT(Export(kArm, "--report '" + (folder / "game") + "'").errors, HasSubstr("the report "));
}

// Would catch advice that fails a build, a message that a script can't tell from others or place, and a
// terminal that speaks another language than its user.
TEST_F(Program, TellsInTheLanguageOfTheUserAndReportsBoth) {
    const char* scene = R"({"scene": 1, "nodes": [{"name": "root", "properties": ["Model=m",
        "animation=walk,all,0-900"], "object": {"type": "helper"}, "children": [
        {"name": "foot", "properties": ["IKType=hinge"], "object": {"type": "helper"}}]}]})";
    const std::string reporting = "--report '" + (folder / "report.json") + "'";
    const eProgramResult english = Export(scene, reporting);
    EXPECT_THAT(english.errors, HasSubstr("error: Unknown IK type 'hinge' in the bone 'foot'\n"));
    EXPECT_THAT(english.errors, HasSubstr("advice: The animation 'walk' (frames 0-900) reaches beyond"));
    EXPECT_THAT(Export(scene, "--language ru").errors, HasSubstr("error: Неизвестный тип IK 'hinge'"));
    const auto report = nlohmann::ordered_json::parse(folder.Read("report.json"));
    EXPECT_EQ(report["schema"], 2);
    const auto& joint = report["messages"].back();
    EXPECT_EQ(
        joint.dump(),
        R"({"code":"joints.unknown-type","kind":"error","place":{"node":"root/foot","property":"IKType"},)"
        R"("title":"Ошибка","text":"Неизвестный тип IK 'hinge' в кости 'foot'",)"
        R"("english":"Unknown IK type 'hinge' in the bone 'foot'",)"
        R"("cure":"IKType is one of revolute, prizmatic, socket.",)"
        R"("russianCure":"IKType бывает revolute, prizmatic или socket."})");
    std::string advised = scene;
    advised.replace(advised.find("hinge"), 5, "socket");
    advised.replace(advised.find("walk,all"), 8, "walk");
    const eProgramResult advice = Export(advised);
    EXPECT_EQ(advice.exitCode, 0) << advice.errors;
    ::setenv("LC_ALL", "ru_RU.UTF-8", 1);
    EXPECT_THAT(Export(scene).errors, HasSubstr("advice: Анимация 'walk'"));
    EXPECT_THAT(Run("gltf no.mdl a.glb").errors, testing::EndsWith("no.mdl: такой папки нет\n"));
    EXPECT_THAT(Run("gltf no.mdl a.glb --language en").errors, HasSubstr("no such folder"));
    ::unsetenv("LC_ALL");
}

// Would catch a command or flag whose help was forgotten in Russian.
TEST_F(Program, HelpsInRussian) {
    const std::regex words("(^|  )[A-Z][a-z]+ [A-Za-z]");
    for (const char* command :
         {"", "export", "batch", "plan", "why", "verify", "diff", "check", "convert", "inspect", "gltf",
          "preview", "pak", "options", "properties", "completion", "lint", "messages"}) {
        std::istringstream english(Run(std::string(command) + " --help").output);
        const std::string russian = Run(std::string(command) + " --help --language ru").output;
        for (std::string line; std::getline(english, line);) {
            if (std::regex_search(line, words)) {
                EXPECT_EQ(russian.find(line + "\n"), std::string::npos) << command << line;
            }
        }
    }
}

// Would catch a page that lags behind the table.
TEST_F(Program, ThePageOfMessagesIsThatOfTheTable) {
    std::ifstream page(support::SourceTree() / "docs/messages.md");
    EXPECT_EQ(Run("messages --markdown").output, std::string(std::istreambuf_iterator<char>(page), {}));
    EXPECT_THAT(Run("messages bones.duplicate-name").output, HasSubstr("cure: Rename one of the nodes"));
    EXPECT_EQ(Run("messages bones.duplicate").exitCode, 2);
}

TEST_F(Program, StoresOptionsForTheNextCall) {
    const std::string config = " --config '" + (folder / "config") + "'";
    EXPECT_EQ(Export(kArm, "--no-animation --animate-reverse").exitCode, 0);
    const eProgramResult shown = Run("options" + config);
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_THAT(shown.output, HasSubstr("exportAnimation=0\n"));
    EXPECT_THAT(shown.output, HasSubstr("exportMesh=1\n"));
    EXPECT_THAT(shown.output, HasSubstr("reverseAnimation=1\n"));
    EXPECT_EQ(Run("options exportAnimation=1" + config).exitCode, 0);
    EXPECT_THAT(Run("options" + config).output, HasSubstr("exportAnimation=1\n"));
    EXPECT_EQ(Run("options exportAnimation=2" + config).exitCode, 2);
    EXPECT_EQ(Run("options noSuchOption=1" + config).exitCode, 2);
    const std::string tooLong = folder / std::string(260, 'x');
    EXPECT_EQ(Run("options 'resourceRoot=" + tooLong + "'" + config).exitCode, 2);
    EXPECT_EQ(Export(kArm, "--common-source '" + tooLong + "'").exitCode, 2);
    std::string stored = folder.Read("config/zyrexport.cfg");
    stored.replace(31, tooLong.size(), tooLong);
    folder.Write("config/zyrexport.cfg", stored);
    const eProgramResult refused = Run("export '" + (folder / "scene.scene.json") + "'" + config);
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_THAT(refused.errors, HasSubstr("\n  Path of the game's resources: /"));
}

// An open, a write and a rename that fail. Would catch a run that ends otherwise for it, a word to the user,
// options that are lost, a half file.
TEST_F(Program, EndsAsItWouldWhenTheOptionsCannotBeStored) {
    namespace fs = std::filesystem;
    const fs::path place = folder / "config/zyrexport.cfg";
    const fs::path temporary = folder / "config/zyrexport.cfg.tmp";
    const auto expectNothingStored = [&] {
        for (const bool isExport : {true, false}) {
            const eProgramResult result =
                isExport ? Export(kArm) : Run("options exportMesh=0 --config '" + (folder / "config") + "'");
            EXPECT_EQ(result.exitCode, isExport ? 0 : 3);
            EXPECT_EQ(result.errors.empty(), isExport) << result.errors;
        }
    };
    folder.Write("config/zyrexport.cfg", "old");
    fs::create_directory(temporary);
    expectNothingStored();
    fs::remove(temporary);
    fs::create_symlink("/dev/full", temporary);
    EXPECT_EQ(Export(kArm).exitCode, 0);
    EXPECT_FALSE(fs::exists(fs::symlink_status(temporary)));
    EXPECT_EQ(folder.Read("config/zyrexport.cfg"), "old");
    fs::remove(place);
    fs::create_directories(place / "taken");
    expectNothingStored();
    EXPECT_FALSE(fs::exists(temporary));
}

// The folder has the spelling that the user typed; what the scene names is in lower case.
// Would catch a folder whose name is changed, refused or forgotten on the way from the command line to the
// disk, into the stored options and back, a picture beside the scene that isn't found there, and escapes in
// what is written.
TEST_F(Program, WorksInFoldersOfAnyAlphabet) {
    constexpr const char* kPainted =
        R"({"scene": 1, "materials": {"m": {"type": "standard", "name": "m", "maps":
        {"diffuse": {"map": {"type": "bitmap", "file": "Łatki/wall.bmp"}}}}}, "nodes": [
        {"name": "root", "properties": ["Model=units/arm"], "object": {"type": "helper"}, "children": [
            {"name": "arm", "properties": ["Poly"], "material": "m", "object": {"type": "box", "width": 1,
                "length": 2, "height": 3}}]}]})";
    for (const std::string name : {"Game Of Мы", "Łódź", "資源 Art", "😀/e\u0301"}) {
        folder.Write(name + "/art/a.scene.json", kPainted);
        folder.Write(name + "/art/Łatki/wall.bmp", support::Bmp({8, 8, 3, std::vector<std::uint8_t>(192)}));
        const auto at = [&](const char* file) { return " '" + (folder / (name + file)) + "'"; };
        const std::string config = " --config" + at("/Config");
        const std::string scene = "export" + at("/art/a.scene.json") + config;
        const eProgramResult first = Run(scene + " --resource-root" + at("/Game"));
        ASSERT_EQ(first.exitCode, 0) << name << first.errors;
        EXPECT_EQ(first.errors, "") << name;
        for (const char* file : {"arm.mdl", ".material", "wall.bmp"}) {
            EXPECT_TRUE(folder.Has(name + "/Game/units/arm/" + file)) << name << file;
            EXPECT_EQ(folder.Read(name + "/Game/units/arm/" + file).find('\x98'), std::string::npos) << name;
        }
        EXPECT_THAT(Run("options" + config).output, HasSubstr(LowerAscii(name) + "/game\n"));
        std::filesystem::remove_all(folder / (name + "/Game/units"));
        EXPECT_EQ(Run(scene).exitCode, 0) << name;
        EXPECT_TRUE(folder.Has(name + "/Game/units/arm/arm.mdl")) << name;
        EXPECT_THAT(Run("inspect" + at("/Game")).output, HasSubstr("/units/arm/.material")) << name;
        EXPECT_EQ(Run("pak" + at("/Game") + at("/game.pak")).exitCode, 0) << name;
        EXPECT_THAT(Run("inspect" + at("/game.pak:/units/arm/arm.mdl")).output, HasSubstr("arm")) << name;
    }
}

// Would catch a name from another system's code page that is guessed at, or refused without a word of what is
// wrong.
TEST_F(Program, SaysWhichNameIsNotUtf8) {
    const eProgramResult result =
        Run("export " + (folder / "a.scene.json") + " --resource-root '" + (folder / "Стар\xCE\xE5") + "'");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.errors, HasSubstr("Стар\\xCE\\xE5: the name is not UTF-8"));
}

// A file where a folder has to be: nobody can answer the box, so the run ends with the fatal error, and the
// report tells it.
TEST_F(Program, EndsWithAFatalErrorWhereItCannotWrite) {
    folder.Write("game/units", "a file");
    const eProgramResult result = Export(kArm, "--report '" + (folder / "report.json") + "'");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, HasSubstr("open error"));
    EXPECT_THAT(result.output, HasSubstr("0 models written"));
    const auto report = nlohmann::json::parse(folder.Read("report.json"));
    EXPECT_EQ(report["exit"], 1);
    EXPECT_EQ(report["messages"].back()["kind"], "fatal");
    EXPECT_EQ(report["messages"].back()["code"], "system.fatal");
    EXPECT_EQ(folder.Read("game/units"), "a file");
}

TEST_F(Program, SaysWhatIsInWrittenFiles) {
    ASSERT_EQ(Export(kArm).exitCode, 0);
    const eProgramResult text = Run("inspect '" + (folder / "game") + "'");
    EXPECT_EQ(text.exitCode, 0) << text.errors;
    EXPECT_THAT(text.output, HasSubstr("bone: arm"));
    const eProgramResult json = Run("inspect --json '" + (folder / "game/units/arm/arm.mdl") + "'");
    EXPECT_THAT(json.output, testing::StartsWith("[\n  {\n    \"schema\": 1,\n"));
    EXPECT_EQ(nlohmann::json::parse(json.output)[0]["boneCount"], 2);
    const std::string png = " --png '" + (folder / "out.png") + "'";
    folder.Write("wall.bmp", support::Bmp({1, 1, 3, {1, 2, 3}}));
    EXPECT_EQ(Run("inspect '" + (folder / "wall.bmp") + "'" + png).exitCode, 0);
    EXPECT_THAT(folder.Read("out.png"), testing::StartsWith("\x89PNG"));
    EXPECT_EQ(Run("inspect '" + (folder / "game") + "'" + png).exitCode, 2);
    std::string topDown = support::Bmp({1, 1, 3, {1, 2, 3}});
    topDown.replace(22, 4, "\xFF\xFF\xFF\xFF");
    folder.Write("copy.bmp", topDown);
    const eProgramResult copy = Run("inspect --json '" + (folder / "copy.bmp") + "'");
    EXPECT_EQ(copy.exitCode, 0) << "a picture that the export has only copied: " << copy.errors;
    EXPECT_EQ(nlohmann::json::parse(copy.output)[0]["height"], 1);
    folder.Write("junk.mesh", "PMSHjunk");
    folder.Write("cut.bmp", topDown.substr(0, topDown.size() - 2));
    for (const char* bad : {"junk.mesh", "cut.bmp", "none"}) {
        EXPECT_EQ(Run("inspect '" + (folder / bad) + "'").exitCode, 2) << bad;
    }
}

// Would catch a build that misses a change of what the run has read or looked for in vain, or that runs for
// ever since a run's own results count as its sources.
TEST_F(Program, TellsABuildWhatToWatch) {
    folder.Write("art 1/wall.bmp", support::Bmp({8, 8, 3, std::vector<std::uint8_t>(192)}));
    folder.Write("art 1/a.scene.json",
                 R"({"scene": 1, "materials": {"m": {"type": "standard", "name": "m", "maps": {
        "diffuse": {"map": {"type": "bitmap", "file": "wall.bmp"}},
        "selfIllumination": {"map": {"type": "bitmap", "file": "gone/glow.bmp"}}}}}, "nodes": [
        {"name": "root", "properties": ["Model=units/arm"], "object": {"type": "helper"}, "children": [
            {"name": "arm", "properties": ["Poly"], "material": "m", "object": {"type": "box", "width": 1,
                "length": 2, "height": 3}}]}]})");
    const std::string call = "export '" + (folder / "art 1/a.scene.json") + "' --resource-root '" +
                             (folder / "game") + "' --config '" + (folder / "config") + "' --report '" +
                             (folder / "report.json") + "' --depfile '" + (folder / "depfile") + "'";
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(Run(call).exitCode, 0);
        const std::string rule = folder.Read("depfile");
        const std::string targets = rule.substr(0, rule.find(": \\\n"));
        const std::string sources = rule.substr(targets.size()) + " ";
        for (const char* target : {"report.json", "game/units/arm/arm.mdl", "game/units/arm/wall.bmp"}) {
            EXPECT_THAT(targets, HasSubstr(folder / target)) << run;
            EXPECT_THAT(sources, Not(HasSubstr(folder / target))) << run;
        }
        for (const char* source :
             {"/art\\ 1/a.scene.json", "/art\\ 1/wall.bmp", "/art\\ 1", "/config/zyrexport.cfg"}) {
            EXPECT_THAT(sources, HasSubstr("\n  " + folder.Path() + source +
                                           (std::string(source).ends_with("1") ? " " : "")))
                << run << sources;
        }
        EXPECT_THAT(sources, HasSubstr("/zyrexport"));
    }
}

// Would catch: a completion that a shell refuses, and flags of another command.
TEST_F(Program, CompletesCommandsAndFlags) {
    const std::string script = folder / "completion";
    const std::string ask = "completion bash > '" + script + "'; bash -c 'source \"$0\"; " +
                            "COMP_WORDS=(zyrexport export --re); COMP_CWORD=2; _zyrexport; " +
                            "printf \"%s \" \"${COMPREPLY[@]}\"' '" + script + "'";
    EXPECT_EQ(Run(ask).output, "--resource-root --report ");
    EXPECT_EQ(Run("completion csh").exitCode, 2);
}

// Would catch: a converted scene that exports to another model, or has lost the pictures inside the original.
TEST_F(Program, ConvertsToAnEqualScene) {
    const auto exported = [&](const std::string& scene) {
        const std::string root = folder / "game";
        std::filesystem::remove_all(root);
        const eProgramResult result = Run("export '" + (folder / scene) + "' --resource-root '" + root +
                                          "' --config '" + (folder / "config") + "'");
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
            if (entry.is_regular_file()) {
                const std::string name = std::filesystem::relative(entry.path(), folder.Path()).string();
                const std::string content = folder.Read(name);
                files[name] = content.substr(content.starts_with(";") ? content.find('{') : 0);
            }
        }
        return files;
    };
    support::eGltfText file;
    const int points = file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});
    const int places = file.Floats("VEC2", {0, 0, 1, 0, 0, 1});
    const int picture = file.View(support::Png({1, 1, 3, {10, 20, 30}}));
    file.Section("nodes", R"([{"name": "root", "mesh": 0, "extras": {"Model": "units/arm", "Poly": true}}])");
    file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": )" + std::to_string(points) +
                               R"(, "TEXCOORD_0": )" + std::to_string(places) + R"(}, "material": 0}]}])");
    file.Section("materials", R"([{"pbrMetallicRoughness": {"baseColorTexture": {"index": 0}}}])");
    file.Section("textures", R"([{"source": 0}])");
    file.Section("images", R"([{"name": "wood", "mimeType": "image/png", "bufferView": )" +
                               std::to_string(picture) + "}]");
    folder.Write("made/scene.glb", file.Binary());
    EXPECT_EQ(Run("convert '" + (folder / "made/scene.glb") + "' '" + (folder / "other/b.scene.json") + "'")
                  .exitCode,
              0);
    const auto files = exported("made/scene.glb");
    EXPECT_TRUE(files.contains("game/units/arm/wood.bmp"));
    EXPECT_EQ(exported("other/b.scene.json"), files);
}

// Would catch: bytes that change from run to run, and a file that is written again all the same.
TEST_F(Program, GivesTheSameBytesForTheSameSourceDate) {
    ::setenv("SOURCE_DATE_EPOCH", "1000000000", 1);
    ASSERT_EQ(Export(kArm).exitCode, 0);
    EXPECT_THAT(folder.Read("game/units/arm/arm.mdl"), HasSubstr("Sun Sep  9 01:46:40 2001"));
    ASSERT_EQ(Export(kArm, "--report '" + (folder / "report.json") + "'").exitCode, 0);
    EXPECT_THAT(folder.Read("report.json"), HasSubstr("\"kept\""));
    EXPECT_THAT(folder.Read("report.json"), Not(AnyOf(HasSubstr("\"written\""), HasSubstr(".tmp"))));
    ::unsetenv("SOURCE_DATE_EPOCH");
}

}  // namespace
