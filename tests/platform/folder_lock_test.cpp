// Locks of one process, which the system keeps from one another like those of two: what is opened anew is
// another holder.
#include "platform/folder_lock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/user.h"
#include "support/temp_folder.h"

namespace {

using platform::eLockAnswer;
using std::chrono::milliseconds;

// Would catch: a lock that keeps nobody out, one whose owner can't be read while it is held, a lock file or a
// folder made for it that stays.
TEST(FolderLock, KeepsOthersOutAndNamesItsOwner) {
    const support::eTempFolder root;
    const std::string model = root / "units/a";
    std::string owner;
    {
        platform::eFolderLock first;
        ASSERT_EQ(first.Take(model, milliseconds(0), owner), eLockAnswer::Held);
        platform::eFolderLock second;
        EXPECT_EQ(second.Take(model, milliseconds(30), owner), eLockAnswer::InUse);
        EXPECT_THAT(owner, testing::EndsWith("(process " + std::to_string(platform::ProcessNumber()) + ")"));
    }
    EXPECT_FALSE(std::filesystem::exists(root / "units"));
    platform::eFolderLock third;
    EXPECT_EQ(third.Take(model, milliseconds(0), owner), eLockAnswer::Held);
}

}  // namespace
