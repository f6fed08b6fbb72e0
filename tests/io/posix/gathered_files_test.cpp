// Files whose names wait for the end of a run: what the run sees of them meanwhile, and that none gets lost.
#include "io/streams/gathered_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <span>
#include <string>

#include "io/file_stream_fixture.h"
#include "io/path.h"
#include "io/streams/whole_file.h"
#include "platform/file_events.h"

namespace {

using namespace io_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class GatheredFiles : public eFileStreamTest {
protected:
    bool Write(const std::string& name, std::string_view text) {
        return xIo::WriteWholeFile(folder / name,
                                   {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    // What the run reads, whatever stands on disk.
    std::string ReadInRun(const std::string& name) {
        eFileStream stream;
        std::string text(stream.Open(folder / name, streamRead) ? static_cast<std::size_t>(stream.Size()) : 0,
                         '\0');
        stream.Read(text.data(), static_cast<int>(text.size()));
        return text;
    }
};

// Would catch: a run that reads its own past, a name given too early or to the wrong content, a .tmp left.
TEST_F(GatheredFiles, AreThereForTheRunAtOnceAndOnDiskAtTheEnd) {
    folder.Write("Old", "old");
    folder.Write("gone", "old");
    xIo::eGatheredFiles files;
    EXPECT_TRUE(Write("old", "new") && Write("twice", "1") && Write("gone", "new"));
    EXPECT_EQ(folder.Read("Old"), "old");
    EXPECT_FALSE(folder.Has("twice"));
    EXPECT_EQ(ReadInRun("old"), "new");
    EXPECT_EQ(ReadInRun("twice"), "1");
    EXPECT_FALSE(PathExists(folder / "twice.tmp"));
    EXPECT_TRUE(xIo::CopyWholeFile(folder / "twice", folder / "copy") && Write("twice", "2"));
    EXPECT_TRUE(PathExists(folder / "twice") && RemovePath(folder / "gone"));
    EXPECT_FALSE(PathExists(folder / "gone"));
    EXPECT_TRUE(xIo::WriteWholeFile(folder / "shared", {}, {}, xIo::eSharing::Shared));
    EXPECT_FALSE(folder.Has("shared.tmp")) << "another run may write it now";
    files.Settle();
    EXPECT_EQ(folder.Read("Old") + folder.Read("twice") + folder.Read("copy"), "new21");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 4);
    EXPECT_THAT(messages.Lines(), IsEmpty());
}

// Would catch: a file that is written for nothing, a texture whose time stays so that each run makes it
// again, one that is taken for the same by its length, and a link through which a run changes what lies
// elsewhere.
TEST_F(GatheredFiles, LeaveWhatHasItsBytesAlready) {
    namespace fs = std::filesystem;
    const fs::file_time_type old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const char* name : {"Text", "texture", "other", "elsewhere/target"}) {
        folder.Write(name, "same");
        fs::last_write_time(folder / name, old);
    }
    fs::create_symlink(folder / "elsewhere/target", folder / "link");
    std::string told;
    const auto previous =
        platform::SetFileObserver([&](platform::eFileAction action, const std::string& path) {
            told +=
                fs::path(path).filename().string() + (action == platform::eFileAction::Kept ? " kept," : ",");
        });
    xIo::eGatheredFiles files;
    eFileStream text;
    ASSERT_TRUE(text.Open(folder / "text", streamWrite | streamTruncate));
    text.Write("same", 4);
    EXPECT_TRUE(text.Close() && Write("texture", "same") && Write("other", "sama") && Write("link", "same"));
    EXPECT_FALSE(folder.Has("Text.tmp") || folder.Has("texture.tmp"));
    files.Settle();
    platform::SetFileObserver(previous);
    EXPECT_EQ(told, "Text kept,texture,other,link,");
    EXPECT_EQ(fs::last_write_time(folder / "Text"), old);
    EXPECT_GT(fs::last_write_time(folder / "texture"), old);
    EXPECT_EQ(folder.Read("other"), "sama");
    EXPECT_FALSE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(fs::last_write_time(folder / "elsewhere/target"), old);
}

// Would catch: files that were complete and are lost with the process, or a report of what is not there.
TEST_F(GatheredFiles, GetTheirNamesBeforeAFatalErrorEndsTheProcess) {
    const pid_t child = ::fork();
    if (child == 0) {
        const xIo::eGatheredFiles files;
        Write("file", "new");
        Fail(__FILE__, __LINE__, "fatal");
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(folder.Read("file"), "new");
    EXPECT_FALSE(folder.Has("file.tmp"));
}

// Would catch: a failure that nobody is told, or one that takes the other files along.
TEST_F(GatheredFiles, TellWhatCouldNotBeKept) {
    const xDebug::eHandlingMode mode(xDebug::throwInstead);
    std::string lost;
    auto previous = platform::SetFileObserver([&](platform::eFileAction action, const std::string& path) {
        lost += action == platform::eFileAction::Lost ? path : "";
    });
    xIo::eGatheredFiles files;
    EXPECT_TRUE(Write("a", "new") && Write("blocked", "new") && Write("eaten", "new") && Write("z", "new"));
    std::filesystem::remove((folder / "eaten") + ".tmp");
    folder.Write("blocked/by", "a folder");
    messages.AnswerNext(platform::eBoxAnswer::Retry);
    EXPECT_THROW(files.Settle(), xDebug::eEx_Custom);
    xDebug::ClearExceptionFlag();
    platform::SetFileObserver(previous);
    const std::string asked = "Error writing filestream: " + (folder / "blocked");
    EXPECT_THAT(messages.Lines(), ElementsAre(HasSubstr(folder / "eaten"), asked, asked));
    EXPECT_EQ(lost, folder / "eaten");
    EXPECT_EQ(folder.Read("a") + folder.Read("z"), "newnew");
}

}  // namespace
