// Paths of the system on a disk whose names have case: artists' scenes spell the same file in many ways.
#include "platform/path_lookup.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "base/ansi.h"
#include "platform/drive_table.h"
#include "platform/file.h"
#include "platform/folder.h"
#include "platform/folder_memory.h"
#include "support/temp_folder.h"

namespace {

// Where the path leads, from the test's folder on.
std::string Found(const support::eTempFolder& folder, const std::string& path) {
    std::string disk;
    EXPECT_TRUE(platform::FindOnDisk(folder / path, disk).IsOk());
    EXPECT_EQ(disk.substr(0, folder.Path().size()), folder.Path());
    return disk.substr(std::min(disk.size(), folder.Path().size() + 1));
}

// Would catch: a look-up that folds everything, lists in the order of the disk, or stops at the first folder.
TEST(PathLookup, FindsOtherSpellingsAndPrefersTheExactOne) {
    const support::eTempFolder folder;
    folder.Write("Textures/Wood.TGA", "");
    folder.Write("Textures/Both.tga", "");
    folder.Write("Textures/both.tga", "");
    folder.Write("Textures/Many.TGA", "");
    folder.Write("Textures/MANY.tga", "");
    EXPECT_EQ(Found(folder, "Textures/Wood.TGA"), "Textures/Wood.TGA");
    EXPECT_EQ(Found(folder, "textures/wood.tga"), "Textures/Wood.TGA");
    EXPECT_EQ(Found(folder, "TEXTURES\\both.tga"), "Textures/both.tga");
    EXPECT_EQ(Found(folder, "textures/Both.tga"), "Textures/Both.tga");
    EXPECT_EQ(Found(folder, "textures/many.tga"), "Textures/MANY.tga");
    EXPECT_EQ(Found(folder, "textures/wood.tga.tmp"), "Textures/wood.tga.tmp");
}

// Would catch: Cyrillic names that go to disk as code page bytes or keep their case when created.
TEST(PathLookup, KnowsCyrillicLetters) {
    const support::eTempFolder folder;
    folder.Write("Модель/Ёлка.tga", "");
    EXPECT_EQ(Found(folder, "мОДЕЛЬ/ёЛКА.TGA"_ansi), "Модель/Ёлка.tga");
    EXPECT_EQ(Found(folder, "модель/Новая/Ў.TGA"_ansi), "Модель/новая/ў.tga");
}

// Would catch: a run that no longer sees what it has made or removed itself, or what others have made.
TEST(PathLookup, FollowsChangesInFoldersThatAreRemembered) {
    const support::eTempFolder folder;
    folder.Write("Art/Wood.TGA", "");
    const auto age = [&] {
        const auto now = std::filesystem::file_time_type::clock::now();
        std::filesystem::last_write_time(folder / "Art", now - std::chrono::hours(1));
    };
    const auto make = [&](const char* name) {
        platform::eFile file;
        file.Open(folder / name, platform::eFileAccess::WriteNew, platform::ePathForm::Native);
    };
    age();
    platform::RememberFolders(true);
    EXPECT_EQ(Found(folder, "art/wood.tga"), "Art/Wood.TGA");
    make("Art/Own.TGA");
    platform::MakeFolder(folder / "Art/sub");
    make("Art/sub/Own.TGA");
    EXPECT_EQ(Found(folder, "art/own.tga"), "Art/Own.TGA");
    EXPECT_EQ(Found(folder, "art/sub/own.tga"), "Art/sub/Own.TGA");
    platform::RemoveTree(folder / "Art/Own.TGA");
    EXPECT_EQ(Found(folder, "art/own.tga"), "Art/own.tga");
    age();
    EXPECT_EQ(Found(folder, "art/foreign.tga"), "Art/foreign.tga");
    folder.Write("Art/Foreign.TGA", "");
    EXPECT_EQ(Found(folder, "art/foreign.tga"), "Art/Foreign.TGA");
    platform::RememberFolders(false);
}

TEST(PathLookup, CreatesInLowerCaseFromTheFirstMissingPartOn) {
    const support::eTempFolder folder;
    folder.MakeFolder("Units");
    EXPECT_EQ(Found(folder, "units/Tank/Body.mesh"), "Units/tank/body.mesh");
    EXPECT_EQ(Found(folder, "units/./Tank//../Hull/"), "Units/hull");
}

// Would catch: ".." that follows a link to its target's parent, where the fence has not looked.
TEST(PathLookup, ResolvesDotsInTheText) {
    const support::eTempFolder folder;
    folder.MakeFolder("a/b");
    folder.MakeFolder("far/away");
    std::filesystem::create_directory_symlink(folder / "far/away", folder / "a/link");
    EXPECT_EQ(Found(folder, "a/link/../b"), "a/b");
    std::string disk;
    ASSERT_TRUE(platform::FindOnDisk("/../../..", disk).IsOk());
    EXPECT_EQ(disk, "/");
}

TEST(PathLookup, PutsDrivesUnderTheirFolder) {
    const support::eTempFolder folder;
    folder.Write("game/Data/x.tga", "");
    platform::MapDrive('d', folder / "game");
    std::string disk;
    ASSERT_TRUE(platform::FindOnDisk("D:\\data\\X.tga", disk).IsOk());
    EXPECT_EQ(disk, folder / "game/Data/x.tga");
    ASSERT_TRUE(platform::FindOnDisk("d:/../../etc", disk).IsOk());
    EXPECT_EQ(disk, folder / "game/etc");
    EXPECT_EQ(platform::FindOnDisk("e:/data/x.tga", disk).reason, platform::eIoReason::NoDrive);
    EXPECT_EQ(disk, "");
    platform::ClearDrives();
    EXPECT_EQ(platform::FindOnDisk("d:/data/x.tga", disk).reason, platform::eIoReason::NoDrive);
}

TEST(PathLookup, StartsAtTheCurrentFolder) {
    const support::eTempFolder folder;
    folder.MakeFolder("here");
    folder.Write("Side/x", "");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder / "here");
    EXPECT_EQ(platform::DiskPath("./../side/X"), folder / "Side/x");
    EXPECT_EQ(platform::DiskPath("new"), folder / "here/new");
    EXPECT_EQ(platform::DiskPath("../Side/x", platform::ePathForm::Native), folder / "Side/x");
    std::filesystem::current_path(before);
}

TEST(PathLookup, KnowsTheNullDevice) {
    EXPECT_TRUE(platform::IsNullDevice("nul"));
    EXPECT_TRUE(platform::IsNullDevice("NUL"));
    EXPECT_FALSE(platform::IsNullDevice("nul.txt"));
    EXPECT_FALSE(platform::IsNullDevice("units/nul"));
}

}  // namespace
