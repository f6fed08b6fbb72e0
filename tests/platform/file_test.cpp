// Files and folders at their limits.
#include "platform/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/ansi.h"
#include "platform/folder.h"
#include "support/temp_folder.h"

namespace {

using platform::eFile;
using platform::eFileAccess;
using platform::eIoReason;

TEST(File, TellsWhyItCannotBeOpened) {
    const support::eTempFolder folder;
    folder.Write("plain", "x");
    eFile file;
    EXPECT_EQ(file.Open(folder / "absent", eFileAccess::Read).reason, eIoReason::NotFound);
    EXPECT_EQ(file.Open(folder / "no/such/folder", eFileAccess::WriteNew).reason, eIoReason::NotFound);
    EXPECT_EQ(file.Open(folder / "plain/below", eFileAccess::WriteNew).reason, eIoReason::NotFound);
    EXPECT_EQ(file.Open(folder.Path(), eFileAccess::Read).reason, eIoReason::AccessDenied);
    EXPECT_EQ(file.Open(folder.Path(), eFileAccess::WriteNew).reason, eIoReason::AccessDenied);
    EXPECT_FALSE(file.IsOpen());
}

TEST(File, ReadsUpToTheEnd) {
    const support::eTempFolder folder;
    folder.Write("file", "abcdef");
    eFile file;
    ASSERT_TRUE(file.Open(folder / "FILE", eFileAccess::Read).IsOk());
    char data[16] = {};
    std::size_t got = 0;
    EXPECT_TRUE(file.Seek(4).IsOk());
    EXPECT_TRUE(file.Read(data, sizeof data, got).IsOk());
    EXPECT_EQ(std::string(data, got), "ef");
    EXPECT_FALSE(file.Write("x", 1).IsOk());
}

TEST(Folder, ListsInByteOrderWithoutForeignNames) {
    const support::eTempFolder folder;
    folder.Write("b", "");
    folder.Write("Я", "");
    folder.Write("日本", "");
    folder.MakeFolder("a");
    std::vector<platform::eFolderEntry> entries;
    ASSERT_TRUE(platform::ListFolder(folder.Path(), entries).IsOk());
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].name, "a");
    EXPECT_TRUE(entries[0].isFolder);
    EXPECT_EQ(entries[1].name, "b");
    EXPECT_FALSE(entries[1].isFolder);
    EXPECT_EQ(entries[2].name, "Я"_ansi);
    EXPECT_EQ(platform::ListFolder(folder / "absent", entries).reason, eIoReason::NotFound);
}

}  // namespace
