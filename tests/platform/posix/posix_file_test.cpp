// Files and folders where the disk knows case, pipes and links.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "platform/file.h"
#include "platform/file_events.h"
#include "platform/folder.h"
#include "support/temp_folder.h"

namespace {

using platform::eFile;
using platform::eFileAccess;
using platform::eIoReason;

// Would catch: the code of an earlier call, or none at all, told as the reason of this one.
TEST(File, TellsTheReasonOfTheCallThatFailed) {
    const support::eTempFolder folder;
    folder.Write("plain", "x");
    folder.Write("full/file", "x");
    errno = 0;
    EXPECT_EQ(platform::MakeFolder(folder / "plain/below").code, ENOTDIR);
    errno = 0;
    EXPECT_EQ(platform::RenameOver(folder / "plain", folder / "full").code, EISDIR);
    errno = 0;
    EXPECT_EQ(platform::RemoveTree(folder / "absent").code, ENOENT);
}

// Would catch: a run that waits for ever on a pipe or copies an endless device that a scene calls a texture.
TEST(File, TakesOnlyFilesWithAnEndForResources) {
    const support::eTempFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    eFile file;
    EXPECT_EQ(file.Open(folder / "pipe", eFileAccess::Read).reason, eIoReason::AccessDenied);
    EXPECT_EQ(file.Open("/dev/zero", eFileAccess::Read).reason, eIoReason::AccessDenied);
    EXPECT_TRUE(file.Open("nul", eFileAccess::WriteNew).IsOk());
    EXPECT_TRUE(file.Write("x", 1).IsOk());
}

// Would catch: a rename onto a second spelling, which leaves the old file beside the new one.
TEST(File, ReplacesTheFileWhateverItsSpelling) {
    const support::eTempFolder folder;
    folder.Write("Wood.TGA", "old");
    folder.Write("wood.tga.tmp", "new");
    std::vector<std::string> events;
    auto previous = platform::SetFileObserver(
        [&](platform::eFileAction, const std::string& path) { events.push_back(path); });
    EXPECT_TRUE(platform::RenameOver(folder / "wood.tga.tmp", folder / "wood.tga").IsOk());
    platform::SetFileObserver(previous);
    EXPECT_EQ(folder.Read("Wood.TGA"), "new");
    EXPECT_FALSE(folder.Has("wood.tga"));
    EXPECT_THAT(events, testing::ElementsAre(folder / "Wood.TGA"));
}

// Would catch: a removal that follows a link and empties a folder elsewhere, or leaves a foreign name.
TEST(Folder, RemovesATreeButNotWhatItsLinksShow) {
    const support::eTempFolder folder;
    folder.Write("keep/precious", "x");
    folder.Write("tree/sub/file", "");
    folder.Write("tree/日本", "");
    std::filesystem::create_directory_symlink(folder / "keep", folder / "tree/link");
    EXPECT_TRUE(platform::RemoveTree(folder / "TREE").IsOk());
    EXPECT_FALSE(folder.Has("tree"));
    EXPECT_TRUE(folder.Has("keep/precious"));
    EXPECT_EQ(platform::RemoveTree(folder / "tree").reason, eIoReason::NotFound);
    EXPECT_FALSE(platform::RemoveTree("/proc/self/fdinfo").IsOk());
}

}  // namespace
