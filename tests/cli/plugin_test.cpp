// The exporter as a plug-in module, loaded as a modelling host loads it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "standalone/plugin_module.h"
#include "support/program.h"
#include "support/source_tree.h"
#include "support/temp_folder.h"

namespace {

using support::eProgramResult;
using testing::HasSubstr;

constexpr const char* kPlugin = ZYR_PLUGIN;

class Plugin : public testing::Test {
protected:
    std::string Quoted(const std::string& name) const { return "'" + (folder / name) + "'"; }

    // Exports an example into a resource tree of that name.
    eProgramResult Export(const std::string& example, const std::string& tree, const std::string& flags) {
        folder.MakeFolder(tree);
        return support::RunProgram(
            folder, "export '" + (support::SourceTree() / "examples" / example).string() +
                        "' --resource-root " + Quoted(tree) + " --config " + Quoted("config") + " " + flags);
    }

    // Content by path below the tree.
    std::map<std::string, std::string> Files(const std::string& tree) const {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / tree)) {
            if (entry.is_regular_file()) {
                const std::string name = std::filesystem::relative(entry.path(), folder / tree).string();
                files[name] = folder.Read(tree + "/" + name);
            }
        }
        return files;
    }

    support::eTempFolder folder;
};

TEST_F(Plugin, TellsTheHostWhatItIs) {
    standalone::PluginModule plugin;
    ASSERT_EQ(plugin.Load(kPlugin).english, "");
    EXPECT_EQ(plugin.Description(), "ZYR Model exporter");
    platform::eSharedLibrary library;
    ASSERT_EQ(library.Load(kPlugin), "");
    const auto classDesc = reinterpret_cast<host::LibClassDescFunction>(library.Find("LibClassDesc"));
    EXPECT_EQ(classDesc(1), nullptr);
    EXPECT_EQ(classDesc(-1), nullptr);
    EXPECT_EQ(classDesc(0)->IsPublic(), 1);
    EXPECT_STREQ(classDesc(0)->ClassName(), "ZYRExport");
    EXPECT_STREQ(classDesc(0)->Category(), "Standard");
    EXPECT_EQ(classDesc(0)->ClassID(), (host::ClassId{0x5FD31026, 0x0E63557D}));
    const auto exporter = plugin.NewExporter();
    EXPECT_STREQ(exporter->LongDesc(), "3D Studio MAX to ZYR Model Scene Exporter");
    EXPECT_STREQ(exporter->ShortDesc(), "ZYR Model Scene Export");
    EXPECT_STREQ(exporter->Ext(0), "MDL");
    EXPECT_STREQ(exporter->Ext(1), "");
    EXPECT_TRUE(exporter->SupportsOptions(0, 1));
    EXPECT_FALSE(exporter->SupportsOptions(0, 2));
}

// Would catch, under the leak checker, an exporter that hangs on its module or on a run.
TEST_F(Plugin, MakesExportersThatNeverRun) {
    standalone::PluginModule plugin;
    ASSERT_EQ(plugin.Load(kPlugin).english, "");
    const auto first = plugin.NewExporter();
    const auto second = plugin.NewExporter();
    EXPECT_NE(first, second);
}

// Would catch a module whose code clashes with that of the program or of another module.
TEST_F(Plugin, ExportsFiveFunctionsAndNothingElse) {
    const std::string list = folder / "names";
    ASSERT_EQ(std::system(("nm -D --defined-only '" + std::string(kPlugin) + "' > '" + list + "'").c_str()),
              0);
    std::istringstream lines(folder.Read("names"));
    std::vector<std::string> names;
    for (std::string address, kind, name; lines >> address >> kind >> name;) {
        names.push_back(name);
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("LibDescription", "LibNumberClasses", "LibClassDesc",
                                                     "LibVersion", "CanAutoDefer"));
}

// Would catch a module that sees other options, drives or scene data than the program's own exporter.
TEST_F(Plugin, WritesWhatTheOwnExporterWrites) {
    ::setenv("SOURCE_DATE_EPOCH", "1000000000", 1);
    for (const char* example : {"tank", "structure", "gameplay", "materials", "animations", "yard"}) {
        SCOPED_TRACE(example);
        const std::string scene = std::string(example) + ".scene.json";
        const eProgramResult own = Export(scene, "game", "--animate-reverse");
        const std::map<std::string, std::string> ownFiles = Files("game");
        std::filesystem::remove_all(folder / "game");
        const eProgramResult module =
            Export(scene, "game", "--animate-reverse --plugin '" + std::string(kPlugin) + "'");
        EXPECT_EQ(module.exitCode, own.exitCode);
        EXPECT_EQ(module.errors, own.errors);
        EXPECT_GT(ownFiles.size(), 1U);
        EXPECT_EQ(Files("game"), ownFiles);
        std::filesystem::remove_all(folder / "game");
    }
    ::unsetenv("SOURCE_DATE_EPOCH");
}

// Would catch boxes, fatal errors and writes of a module that pass by the program.
TEST_F(Plugin, WorksInTheProcessOfTheProgram) {
    const std::string plugin = "--plugin '" + std::string(kPlugin) + "'";
    folder.Write("empty.scene.json", R"({"scene": 1})");
    const eProgramResult empty =
        support::RunProgram(folder, "export " + Quoted("empty.scene.json") + " --silent --config " +
                                        Quoted("config") + " --drive d=" + Quoted("") + " " + plugin);
    EXPECT_EQ(empty.exitCode, 3);
    EXPECT_THAT(empty.errors, HasSubstr("error: Nothing to export!\n"));

    const eProgramResult fine = Export("arm.scene.json", "game", plugin + " --report " + Quoted("fine.json"));
    EXPECT_EQ(fine.exitCode, 0) << fine.errors;
    EXPECT_THAT(folder.Read("fine.json"), HasSubstr("arm.mdl\""));
    EXPECT_EQ(Export("arm.scene.json", "game", plugin + " --static-frame 3").exitCode, 2);

    folder.Write("blocked/tests", "a file");
    const eProgramResult blocked =
        Export("arm.scene.json", "blocked", plugin + " --report " + Quoted("blocked.json"));
    EXPECT_EQ(blocked.exitCode, 1);
    EXPECT_THAT(folder.Read("blocked.json"), HasSubstr("\"fatal\""));

    folder.Write("share/tools/3dsmax/SorrelMtl2010_KSR.dlt", "new");
    const eProgramResult outdated =
        Export("arm.scene.json", "outdated", plugin + " --drive t=" + Quoted("share"));
    EXPECT_EQ(outdated.exitCode, 3);
    EXPECT_THAT(outdated.errors, HasSubstr("The version of SorrelMtl2010_KSR.dlt is outdated!"));
    EXPECT_TRUE(Files("outdated").empty());
}

TEST_F(Plugin, RefusesModulesThatItCannotUse) {
    folder.Write("text.dle", "no module");
    const struct {
        std::string file;
        const char* problem;
    } cases[] = {
        {folder / "absent.dle", "absent.dle: is no plug-in module that can be loaded"},
        {folder / "text.dle", "text.dle: is no plug-in module that can be loaded"},
        {ZYR_FOREIGN_VERSION, "is made for version 0x2EE02000 of the host, and this one is 0x2EE02100"},
        {ZYR_MISSING_EXPORT, "does not export CanAutoDefer"},
        {ZYR_NO_DESCRIPTOR, "has no descriptor for its class 0 of 1"},
        {ZYR_NO_CLASS, "none of the 0 classes of the plug-in module is a scene exporter"},
    };
    for (const auto& bad : cases) {
        const eProgramResult result = Export("arm.scene.json", "game", "--plugin '" + bad.file + "'");
        EXPECT_EQ(result.exitCode, 2) << bad.file;
        EXPECT_THAT(result.errors, HasSubstr("error: " + bad.file + ": "));
        EXPECT_THAT(result.errors, HasSubstr(bad.problem));
        EXPECT_TRUE(Files("game").empty()) << bad.file;
    }
}

}  // namespace
