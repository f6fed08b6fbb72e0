#include "io/path.h"

#include <gtest/gtest.h>

#include "platform/drive_table.h"
#include "support/temp_folder.h"

namespace {

TEST(Path, CreatesWhatIsMissingOfAPath) {
    const support::eTempFolder folder;
    folder.MakeFolder("Units");
    EXPECT_TRUE(CreateFolders(folder / "units/tank/common"));
    EXPECT_TRUE(folder.Has("Units/tank/common"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1)
        << "no other spelling";
    EXPECT_TRUE(CreateFolders(folder / "units/tank/common"));
    EXPECT_TRUE(CreateFolders(folder / "units/ship/"));
    EXPECT_TRUE(folder.Has("Units/ship"));
    EXPECT_TRUE(CreateFolders(""));
}

// Would catch: a walk that goes on behind a failure and says that all went well.
TEST(Path, TellsThatAFolderCannotBe) {
    const support::eTempFolder folder;
    folder.Write("file", "");
    EXPECT_FALSE(CreateFolders(folder / "file/sub/sub"));
    EXPECT_FALSE(CreateFolders("q:/unmapped/sub"));
}

TEST(Path, StartsBehindTheDrive) {
    const support::eTempFolder folder;
    platform::MapDrive('d', folder.Path());
    EXPECT_TRUE(CreateFolders("d:/game/units"));
    EXPECT_TRUE(folder.Has("game/units"));
    EXPECT_TRUE(PathExists("D:\\Game\\Units"));
    platform::ClearDrives();
    EXPECT_FALSE(PathExists("d:/game/units"));
}

TEST(Path, RemovesFilesAndFolders) {
    const support::eTempFolder folder;
    folder.Write("a/Anim.TXT", "");
    EXPECT_TRUE(RemovePath(folder / "a/anim.txt"));
    EXPECT_FALSE(PathExists(folder / "a/anim.txt"));
    EXPECT_FALSE(RemovePath(folder / "a/anim.txt"));
    EXPECT_TRUE(RemovePath(folder / "a"));
    EXPECT_FALSE(folder.Has("a"));
}

}  // namespace
