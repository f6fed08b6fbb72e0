// The dialog of the plug-in module as a user sees it, in the stand-alone host.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "base/ansi.h"
#include "desktop/win32/child_program.h"
#include "export/dialog_logic.h"
#include "export/dialog_window.h"
#include "export/options_file.h"
#include "platform/folder.h"
#include "run/export.h"
#include "standalone/standalone_host.h"
#include "support/source_tree.h"
#include "support/temp_folder.h"

namespace {

using desktop::eChildProgram;
using testing::Contains;

constexpr const char* kTitle = "ZYR Model Export";
constexpr int kExport = 1;
constexpr int kCancel = 2;

class Dialog : public testing::Test {
protected:
    Dialog() {
        folder.MakeFolder("game");
        std::filesystem::remove_all("T:/TOOLS");
    }

    // The plug-in exports a scene whose mesh is another one at each frame.
    std::vector<std::string> Arguments() const {
        return {
            "export",          scene,           "--plugin", desktop::BuildFolder() + "ZyrExport2010_KSR.dle",
            "--resource-root", folder / "game", "--config", folder / "config"};
    }

    eExportOptions StoredOptions() const {
        standalone::StandaloneHost host{standalone::eSceneData()};
        host.SetConfigFolder(folder / "config");
        Export exporter;
        exporter.host = &host;
        LoadOptions(exporter);
        return exporter.options;
    }

    const std::string scene =
        platform::Utf8FromPath(support::SourceTree() / "examples" / "waving_flag.scene.json");
    support::eTempFolder folder;
};

const char* ClassFor(const eDialogControl& control) {
    constexpr int kFrameEdit = 1161;
    switch (control.kind) {
        case eDialogControlKind::Edit:
            return control.id == kFrameEdit ? "CustEdit" : "Edit";
        case eDialogControlKind::Spinner:
            return "SpinnerControl";
        default:
            return "Button";
    }
}

// Would catch a resource that differs from the table of the controls, and texts that go through the code page
// of the system.
TEST_F(Dialog, ShowsEveryControlOfTheTable) {
    const eChildProgram program("zyrexport", Arguments());
    HWND dialog = program.WaitForWindow(kTitle);
    ASSERT_NE(dialog, nullptr);
    const std::vector<std::string> texts = desktop::TextsIn(dialog);
    for (const char* group : {"Экспорт", "Типы объектов", "Статика", "Настройки анимации"}) {
        EXPECT_THAT(texts, Contains(group));
    }
    for (const eDialogControl& control : DialogControls()) {
        SCOPED_TRACE(control.id);
        HWND window = ::GetDlgItem(dialog, control.id);
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(desktop::ClassOf(window), ClassFor(control));
        EXPECT_EQ(::IsWindowVisible(window) != FALSE, control.shown);
        EXPECT_THAT(texts, Contains(ToUtf8(control.text)));
    }
    for (const int path : {1021, 1024, 1028}) {
        EXPECT_EQ(::SendMessageW(::GetDlgItem(dialog, path), EM_GETLIMITTEXT, 0, 0), 260);
    }
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, 1025)));
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, 1026)));
    EXPECT_EQ(desktop::TextOf(::GetDlgItem(dialog, 1021)), LowerAnsi(folder / "game"));
    EXPECT_EQ(desktop::TextOf(::GetDlgItem(dialog, 1028)), "texture/common/");
    EXPECT_EQ(::SendMessageW(::GetDlgItem(dialog, 1002), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(::SendMessageW(::GetDlgItem(dialog, 1022), BM_GETCHECK, 0, 0), BST_UNCHECKED);

    desktop::PressButton(dialog, kCancel);
    EXPECT_EQ(program.WaitForEnd(), 0);
    EXPECT_TRUE(std::filesystem::is_empty(platform::PathFromUtf8(folder / "game")));
}

// Would catch a field that is lost or stored in another, and a dialog that closes over an empty path.
TEST_F(Dialog, TakesWhatTheUserSetsOnceThePathsAreThere) {
    const eChildProgram program("zyrexport", Arguments());
    HWND dialog = program.WaitForWindow(kTitle);
    ASSERT_NE(dialog, nullptr);
    desktop::SetText(::GetDlgItem(dialog, 1021), (folder / "Игра") + "\\");
    desktop::SetText(::GetDlgItem(dialog, 1024), "");
    desktop::SetText(::GetDlgItem(dialog, 1028), "Texture\\Ours\\");
    desktop::SetText(::GetDlgItem(dialog, 1161), "5");
    desktop::PressButton(dialog, 1003);
    desktop::PressButton(dialog, 1022);
    desktop::PressButton(dialog, kExport);
    HWND box = program.WaitForWindow("Ошибка");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(desktop::TextsIn(box), Contains("Не задан исходный путь к общим текстурам!"));
    desktop::Press(desktop::SoleButton(box));
    ASSERT_TRUE(program.WaitUntilGone(box));
    EXPECT_TRUE(::IsWindowVisible(dialog));

    desktop::SetText(::GetDlgItem(dialog, 1024), "D:\\Bitmaps\\");
    desktop::PressButton(dialog, kExport);
    EXPECT_EQ(program.WaitForEnd(), 3) << "an error was shown";
    const eExportOptions options = StoredOptions();
    EXPECT_EQ(options.resourceRoot, eName(FromUtf8((folder / "Игра") + "/").text));
    EXPECT_EQ(options.commonTextureSource, eName("d:/bitmaps/"));
    EXPECT_EQ(options.commonTextureTarget, eName("texture/ours/"));
    EXPECT_EQ(options.exportMesh, 1);
    EXPECT_EQ(options.exportAnimation, 0);
    EXPECT_TRUE(options.reverseAnimation);
    EXPECT_FALSE(options.selectedOnly);

    const eChildProgram own("zyrexport", {"export", scene, "--static-frame", "5", "--resource-root",
                                          folder / "own", "--config", folder / "config"});
    EXPECT_EQ(own.WaitForEnd(), 0);
    EXPECT_NE(folder.Read("own/props/flagpole/.mesh"), "");
    EXPECT_EQ(folder.Read("Игра/props/flagpole/.mesh"), folder.Read("own/props/flagpole/.mesh"));
}

// Would catch a spinner without its edit field, or one that leaves the scene's animation range.
TEST_F(Dialog, StepsTheFrameWithinTheRange) {
    const eChildProgram program("zyrexport", Arguments());
    HWND dialog = program.WaitForWindow(kTitle);
    ASSERT_NE(dialog, nullptr);
    HWND edit = ::GetDlgItem(dialog, 1161);
    HWND spinner = ::GetDlgItem(dialog, 1162);
    const auto click = [spinner](int y) {
        ::SendMessageW(spinner, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, y));
        ::SendMessageW(spinner, WM_LBUTTONUP, 0, MAKELPARAM(2, y));
    };
    constexpr int kUpArrow = 2;
    constexpr int kDownArrow = 14;
    EXPECT_EQ(desktop::TextOf(edit), "0");
    click(kUpArrow);
    click(kUpArrow);
    EXPECT_EQ(desktop::TextOf(edit), "2");
    click(kDownArrow);
    EXPECT_EQ(desktop::TextOf(edit), "1");
    desktop::SetText(edit, "100000");
    click(kUpArrow);
    EXPECT_LT(std::stoi(desktop::TextOf(edit)), 1000);
    desktop::SetText(edit, "-7");
    click(kDownArrow);
    EXPECT_EQ(desktop::TextOf(edit), "0");
    desktop::PressButton(dialog, kCancel);
    EXPECT_EQ(program.WaitForEnd(), 0);
}

// A host whose window was closed under it.
struct eHostWithoutWindow : standalone::StandaloneHost {
    using StandaloneHost::StandaloneHost;
    void* GetMAXHWnd() override { return reinterpret_cast<void*>(std::uintptr_t{1}); }
};

// Would catch a dialog that the system refuses, and that passes for a cancelled one or ends the process.
TEST_F(Dialog, ThatCannotBeShownLeavesTheStoredOptions) {
    eHostWithoutWindow host{standalone::eSceneData()};
    Export exporter;
    exporter.host = &host;
    exporter.options.exportMesh = 1;
    EXPECT_TRUE(ShowDialogWindow(exporter));
    EXPECT_EQ(exporter.options.exportMesh, 1);
}

// The share of the studio is drive T:, which whoever runs the tests provides. Would catch a check by anything
// but the times, and a button that can be pressed all the same.
TEST_F(Dialog, LetsOnlyCancelLeadOutWhenThePluginsAreOutdated) {
    const std::filesystem::path share = "T:/TOOLS/3DSMAX";
    ASSERT_TRUE(platform::IsFolder("T:/", platform::ePathForm::Native)) << "the tests need a drive T:";
    std::filesystem::create_directories(share);
    for (const char* name : {"ZyrExport2010_KSR.dle", "SorrelMtl2010_KSR.dlt"}) {
        std::ofstream(share / name) << "newer";
        std::filesystem::last_write_time(
            share / name, std::filesystem::file_time_type::clock::now() + std::chrono::hours(24));
    }
    const eChildProgram program("zyrexport", Arguments());
    HWND warning = program.WaitForWindow("Предупреждение");
    ASSERT_NE(warning, nullptr);
    EXPECT_THAT(desktop::TextsIn(warning),
                Contains("Версия ZyrExport2010_KSR.dle устарела!\n Настоятельно рекомендуется обновить с "
                         "t:/tools/3dsmax/"));
    desktop::Press(desktop::SoleButton(warning));
    HWND error = program.WaitForWindow("Ошибка");
    ASSERT_NE(error, nullptr);
    EXPECT_THAT(desktop::TextsIn(error),
                Contains("Версия SorrelMtl2010_KSR.dlt устарела!\nЭкспорт невозможен. "
                         "Необходимо обновить с t:/tools/3dsmax/"));
    desktop::Press(desktop::SoleButton(error));
    HWND dialog = program.WaitForWindow(kTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, kExport)));
    desktop::PressButton(dialog, kCancel);
    EXPECT_EQ(program.WaitForEnd(), 3) << "an error was shown";
    EXPECT_TRUE(std::filesystem::is_empty(platform::PathFromUtf8(folder / "game")));
    std::filesystem::remove_all("T:/TOOLS");
}

}  // namespace
