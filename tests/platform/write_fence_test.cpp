// The fence around what a scene may write.
#include "platform/write_fence.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/drive_table.h"
#include "platform/file.h"
#include "platform/folder.h"
#include "support/temp_folder.h"

namespace {

class WriteFence : public testing::Test {
protected:
    void SetUp() override { platform::ClearWriteRoots(); }
    void TearDown() override { platform::ClearWriteRoots(); }

    support::eTempFolder folder;
};

// Would catch: a comparison of texts before "..", case and drives are resolved, or one that takes a name with
// the root's beginning for a name below it.
TEST_F(WriteFence, AllowsWhatLiesBelowTheRootOnly) {
    folder.MakeFolder("Game");
    folder.MakeFolder("Game2");
    platform::AddWriteRoot(folder / "game");
    EXPECT_TRUE(platform::IsWriteAllowed(folder / "Game/units/a.mdl"));
    EXPECT_TRUE(platform::IsWriteAllowed(folder / "GAME/Units/../b.mdl"));
    EXPECT_TRUE(platform::IsWriteAllowed("nul"));
    EXPECT_FALSE(platform::IsWriteAllowed(folder / "game/../outside.mdl"));
    EXPECT_FALSE(platform::IsWriteAllowed(folder / "game/units/..\\..\\..\\x"));
    EXPECT_FALSE(platform::IsWriteAllowed(folder / "Game2/x"));
    EXPECT_FALSE(platform::IsWriteAllowed("/etc/passwd"));
    EXPECT_FALSE(platform::IsWriteAllowed("x:/unmapped"));
    platform::MapDrive('x', folder / "Game");
    EXPECT_TRUE(platform::IsWriteAllowed("X:/a"));
    platform::ClearDrives();
}

TEST_F(WriteFence, AllowsAFileWithItsTemporaryBeside) {
    platform::AddWriteRoot(folder / "report.json", platform::ePathForm::Native);
    EXPECT_TRUE(platform::IsWriteAllowed(folder / "report.json"));
    EXPECT_TRUE(platform::IsWriteAllowed(folder / "report.json.tmp"));
    EXPECT_FALSE(platform::IsWriteAllowed(folder / "report.json2"));
}

// Would catch: an operation that forgets to ask.
TEST_F(WriteFence, StopsEveryOperation) {
    folder.Write("outside/file", "old");
    folder.MakeFolder("game");
    folder.Write("game/file", "new");
    platform::AddWriteRoot(folder / "game");
    const std::string outside = folder / "game/../outside/file";
    platform::eFile file;
    using platform::eIoReason;
    EXPECT_EQ(file.Open(outside, platform::eFileAccess::WriteNew).reason, eIoReason::Fenced);
    EXPECT_EQ(file.Open(outside, platform::eFileAccess::Write, platform::ePathForm::Native).reason,
              eIoReason::Fenced);
    EXPECT_EQ(platform::RenameOver(folder / "game/file", outside).reason, eIoReason::Fenced);
    EXPECT_EQ(platform::RenameOver(outside, folder / "game/file").reason, eIoReason::Fenced);
    EXPECT_EQ(platform::MakeFolder(folder / "outside/sub").reason, eIoReason::Fenced);
    EXPECT_EQ(platform::RemoveTree(folder / "outside").reason, eIoReason::Fenced);

    EXPECT_EQ(folder.Read("outside/file"), "old");
    EXPECT_EQ(folder.Read("game/file"), "new");
    EXPECT_TRUE(file.Open(outside, platform::eFileAccess::Read).IsOk());
}

// Would catch: a root that can't be created because its own parents lie outside it.
TEST_F(WriteFence, LetsTheFoldersAboveARootBeMade) {
    platform::AddWriteRoot(folder / "deep/er/game");
    EXPECT_TRUE(platform::MakeFolder(folder / "deep").IsOk());
    EXPECT_TRUE(platform::MakeFolder(folder / "deep/er").IsOk());
    EXPECT_EQ(platform::MakeFolder(folder / "deep/other").reason, platform::eIoReason::Fenced);
}

}  // namespace
