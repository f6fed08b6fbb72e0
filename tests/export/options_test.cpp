#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/ansi.h"
#include "export/deployment.h"
#include "export/dialog_logic.h"
#include "export/options_file.h"
#include "platform/drive_table.h"
#include "support/export_run.h"
#include "support/scene_builder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kFile = "config/zyrexport.cfg";

class eOptionsTest : public testing::Test {
protected:
    eOptionsTest() : run(support::eSceneBuilder().Build()) { run.exporter.host = &run.host; }

    void LoadFrom(const std::string& bytes) {
        run.folder.Write(kFile, bytes);
        run.exporter.options = {};
        LoadOptions(run.exporter);
    }

    support::eExportRun run;
};

// The stored options of the fields, one distinct value in each.
eExportOptions OddOptions() {
    eExportOptions options;
    for (int* flag : {&options.exportMesh, &options.exportIK, &options.optionJ, &options.optionN}) {
        *flag = 0;
    }
    options.optionC = options.optionK = options.optionO = 1;
    options.ambientPercent = 75;
    options.optionP = -2;
    options.staticFrame = 9;
    options.reverseAnimation = options.currentRangeOnly = true;
    options.resourceRoot = "e:/game/";
    options.commonTextureSource = "e:/source/";
    options.commonTextureTarget = "tex/";
    return options;
}

// Would catch a field at a wrong place: the game's tools and older exporters read the same file.
TEST_F(eOptionsTest, TheFileHasItsLayout) {
    run.exporter.options = OddOptions();
    SaveOptions(run.exporter);
    const std::string bytes = run.folder.Read(kFile);
    ASSERT_EQ(bytes.size(), 3106U);
    EXPECT_EQ(bytes.substr(0, 4), std::string("\6\0\0\0", 4));
    EXPECT_EQ(bytes.substr(4, 14), std::string("\0\1\1\1\0\0\1\1\1\0\1\1\0\0", 14));
    EXPECT_EQ(bytes.substr(18, 8), std::string("\x4B\0\0\0\1\0\0\0", 8));
    EXPECT_EQ(bytes.substr(26, 5), std::string("\1\xFE\xFF\xFF\xFF", 5));
    EXPECT_EQ(bytes.substr(31, 9), std::string("e:/game/\0", 9));
    EXPECT_EQ(bytes.substr(1055, 2), std::string("\1\0", 2));
    EXPECT_EQ(bytes.substr(1057, 11), std::string("e:/source/\0", 11));
    EXPECT_EQ(bytes.substr(2081, 6), std::string("\1tex/\0", 6));
}

// Would catch an older file that resets what it does not know, and a broken one that gives half a field.
TEST_F(eOptionsTest, EveryVersionAndEveryLengthIsRead) {
    run.exporter.options = OddOptions();
    SaveOptions(run.exporter);
    const std::string whole = run.folder.Read(kFile);
    const eExportOptions standard;

    LoadFrom(whole);
    EXPECT_EQ(run.exporter.options.commonTextureTarget, eName("tex/"));
    EXPECT_EQ(run.exporter.options.optionP, -2);
    EXPECT_EQ(run.exporter.options.staticFrame, 0);
    EXPECT_TRUE(run.exporter.options.currentRangeOnly);

    struct eVersion {
        char number;
        std::size_t size;
    };
    for (const eVersion& version : {eVersion{1, 26}, {2, 27}, {3, 1057}, {4, 2081}, {5, 2082}}) {
        std::string bytes = whole;
        bytes[0] = version.number;
        LoadFrom(bytes);
        const eExportOptions& options = run.exporter.options;
        EXPECT_EQ(options.ambientPercent, 75);
        EXPECT_EQ(options.optionO, version.number >= 2 ? 1 : standard.optionO);
        EXPECT_EQ(options.optionP, version.number >= 3 ? -2 : standard.optionP);
        EXPECT_EQ(options.reverseAnimation, version.number >= 3);
        EXPECT_EQ(options.commonTextureSource,
                  version.number >= 4 ? eName("e:/source/") : standard.commonTextureSource);
        EXPECT_EQ(options.currentRangeOnly, version.number >= 5);
        EXPECT_EQ(options.commonTextureTarget, standard.commonTextureTarget);

        LoadFrom(whole.substr(0, version.size));
        EXPECT_EQ(run.exporter.options.commonTextureTarget, standard.commonTextureTarget);
        EXPECT_EQ(run.exporter.options.ambientPercent, 75);
    }
    LoadFrom(whole.substr(0, 500));
    EXPECT_EQ(run.exporter.options.resourceRoot, standard.resourceRoot);
    LoadFrom("\7" + whole.substr(1));
    EXPECT_EQ(run.exporter.options.ambientPercent, standard.ambientPercent);
    LoadFrom("");
    EXPECT_EQ(run.exporter.options.exportMesh, 1);
}

// Would catch paths that are compared in two spellings later.
TEST_F(eOptionsTest, PathsOfAForeignFileAreNormalized) {
    SaveOptions(run.exporter);
    std::string bytes = run.folder.Read(kFile);
    bytes.replace(31, 9, std::string("E:\\Game\\\0", 9));
    LoadFrom(bytes);
    EXPECT_EQ(run.exporter.options.resourceRoot, eName("e:/game/"));
}

// Would catch a silent run that keeps a user's options, or forgets to store its own.
TEST_F(eOptionsTest, ASilentRunTakesAndStoresFixedOptions) {
    run.exporter.options = OddOptions();
    SaveOptions(run.exporter);
    EXPECT_EQ(run.exporter.DoExport("", nullptr, &run.host, true, 0), 1);
    EXPECT_EQ(run.exporter.options.resourceRoot, eName("d:/thegame/"));
    EXPECT_EQ(run.exporter.options.optionD, 0);
    EXPECT_EQ(run.folder.Read(kFile).substr(4, 14), std::string("\1\1\0\0\0\1\1\1\1\1\0\1\0\1", 14));
}

// Would catch a check that stops too early or too late, or loses what the user had typed.
TEST_F(eOptionsTest, APathThatNoRunCanUseKeepsTheDialogOpen) {
    Export& exporter = run.exporter;
    eDialogFields fields = ShowDialogFields(exporter);
    EXPECT_EQ(fields.resourceRoot, "d:/thegame/");
    fields.exportMesh = false;
    fields.resourceRoot = "E:\\Game";
    fields.commonTextureSource = "";
    fields.commonTextureTarget = "";
    fields.selectedOnly = true;
    EXPECT_FALSE(TakeDialogFields(exporter, fields, nullptr));
    EXPECT_EQ(exporter.options.exportMesh, 0);
    EXPECT_EQ(exporter.options.resourceRoot, eName("e:/game"));
    EXPECT_FALSE(exporter.options.selectedOnly);

    fields.commonTextureSource = "src";
    EXPECT_FALSE(TakeDialogFields(exporter, fields, nullptr));
    fields.resourceRoot = "";
    EXPECT_FALSE(TakeDialogFields(exporter, fields, nullptr));
    const std::string longest(260, 'a');
    fields.resourceRoot = longest;
    fields.commonTextureTarget = longest + "b";
    EXPECT_FALSE(TakeDialogFields(exporter, fields, nullptr));
    EXPECT_EQ(exporter.options.resourceRoot.Text(), longest);
    EXPECT_THAT(run.Messages(), ElementsAre("Ошибка: Не задан исходный путь к общим текстурам!",
                                            "Ошибка: Не задан путь к общим текстурам в игре!",
                                            "Ошибка: Не задан путь к ресурсам игры!",
                                            "Ошибка: Слишком длинный путь: 261 байт, допустимо не более "
                                            "260.\nКаталог с общими текстурами в игре: " +
                                                longest + "b"));
}

// Would catch a run without a dialog into a folder that nobody has named.
TEST_F(eOptionsTest, NoRunBeginsWithAStoredPathThatIsTooLong) {
    run.exporter.options.resourceRoot = run.folder / std::string(300, 'a');
    EXPECT_TRUE(SaveOptions(run.exporter));
    const std::string stored = run.folder.Read(kFile);
    run.exporter.optionsDialog = nullptr;
    EXPECT_EQ(run.Do(), 1);
    EXPECT_EQ(run.Messages().size(), 1U);
    EXPECT_EQ(run.folder.Read(kFile), stored);
}

// Would catch a range that is not taken over, or read in the wrong base.
TEST_F(eOptionsTest, TheDialogTakesFramesAndFlags) {
    Export& exporter = run.exporter;
    exporter.frameStart = 10;
    exporter.frameEnd = 20;
    eDialogFields fields = ShowDialogFields(exporter);
    EXPECT_EQ(fields.staticFrame, 10);
    exporter.frameStart = -10;
    EXPECT_EQ(ShowDialogFields(exporter).staticFrame, 0);
    EXPECT_EQ(fields.frameEnd, "20");
    fields.frameStart = "0x1f";
    fields.frameEnd = "-3x";
    fields.staticFrame = 15;
    fields.reverseAnimation = true;
    EXPECT_TRUE(TakeDialogFields(exporter, fields, nullptr));
    EXPECT_EQ(exporter.frameStart, 31);
    EXPECT_EQ(exporter.frameEnd, -3);
    EXPECT_EQ(exporter.options.staticFrame, 15);
    EXPECT_TRUE(exporter.options.reverseAnimation);
    EXPECT_THAT(run.Messages(), IsEmpty());
}

// Would catch an old plug-in that passes, or one refused on a machine without the share.
TEST_F(eOptionsTest, OutdatedPluginsAreTold) {
    const std::string local = run.folder / "plugins/";
    run.folder.MakeFolder("plugins");
    EXPECT_TRUE(CheckDeployment(local, nullptr));

    platform::MapDrive('t', run.folder / "share");
    run.folder.MakeFolder("share/tools/3dsmax/SorrelMtl2010_KSR.dlt");
    EXPECT_TRUE(CheckDeployment(local, nullptr)) << "what can't be opened has no time";
    std::filesystem::remove(run.folder / "share/tools/3dsmax/SorrelMtl2010_KSR.dlt");
    run.folder.Write("plugins/zyrexport2010_ksr.dle", "old");
    std::filesystem::last_write_time(run.folder / "plugins/zyrexport2010_ksr.dle",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    run.folder.Write("share/tools/3dsmax/SorrelMtl2010_KSR.dlt", "old");
    std::filesystem::last_write_time(run.folder / "share/tools/3dsmax/SorrelMtl2010_KSR.dlt",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    run.folder.Write("plugins/sorrelmtl2010_ksr.dlt", "newer than the share's");
    run.folder.Write("share/tools/3dsmax/ZyrExport2010_KSR.dle", "new");
    EXPECT_TRUE(CheckDeployment(local, nullptr));
    std::filesystem::remove(run.folder / "plugins/sorrelmtl2010_ksr.dlt");
    EXPECT_FALSE(CheckDeployment(local, nullptr));
    platform::ClearDrives();

    EXPECT_THAT(
        run.Messages(),
        ElementsAre("Предупреждение: Версия ZyrExport2010_KSR.dle устарела!\n Настоятельно рекомендуется "
                    "обновить с t:/tools/3dsmax/",
                    "Предупреждение: Версия ZyrExport2010_KSR.dle устарела!\n Настоятельно рекомендуется "
                    "обновить с t:/tools/3dsmax/",
                    "Ошибка: Версия SorrelMtl2010_KSR.dlt устарела!\nЭкспорт невозможен. "
                    "Необходимо обновить с t:/tools/3dsmax/"));
}

}  // namespace
