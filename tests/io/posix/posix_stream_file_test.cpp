// Streams on a disk that is full or knows case, and in a process that is killed.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "io/file_stream_fixture.h"
#include "io/sdl/sdl_writer.h"
#include "io/streams/whole_file.h"
#include "platform/file_events.h"

namespace {

using namespace io_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PosixFileStream : public eFileStreamTest {};

// Runs the action in a process of its own that may write files of 64 KiB at most, as on a full disk. The exit
// status is the action's result.
template <class Action>
int OnFullDisk(Action action) {
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit limit{64 * 1024, 64 * 1024};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::_exit(action() ? 1 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Would catch: half a file under the final name, a silent loss, a process killed by the limit.
TEST_F(PosixFileStream, KeepsTheOldFileOnAFullDisk) {
    folder.Write("file", "old");
    const std::string block(100 * 1024, 'x');
    const int status = OnFullDisk([&] {
        eFileStream stream;
        stream.Open(folder / "file", writeNew | streamPrompt);
        stream.Write(block.data(), static_cast<int>(block.size()));
        stream.Write("end", 3);
        const bool complete = stream.Close();
        const std::string told =
            "Ошибка: Не удалось записать файл '" + (folder / "file") + "': нет места на диске.";
        return complete || messages.Lines() != std::vector{told};
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.Read("file"), "old");
    EXPECT_EQ(folder.Read("file.tmp").size(), 64u * 1024);
}

TEST_F(PosixFileStream, GoesOnAfterAFullDisk) {
    folder.Write("whole", "old");
    folder.Write("copy", "old");
    folder.Write("source", std::string(100 * 1024, 's'));
    const std::vector<std::uint8_t> block(100 * 1024, 1);
    const int status = OnFullDisk([&] {
        xIo::xSdl::eWriter writer;
        writer.OpenFile(folder / "text");
        writer.Word(std::string(100 * 1024, 't'));
        const bool anyComplete = writer.Close() || xIo::WriteWholeFile(folder / "whole", block) ||
                                 xIo::CopyWholeFile(folder / "source", folder / "copy");
        const bool smallComplete = xIo::WriteWholeFile(folder / "small", std::span(block).first(10));
        return anyComplete || !smallComplete || messages.boxes.size() != 3;
    });
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(folder.Has("text"));
    EXPECT_EQ(folder.Read("whole"), "old");
    EXPECT_EQ(folder.Read("copy"), "old");
    EXPECT_FALSE(folder.Has("whole.tmp") || folder.Has("copy.tmp"));
    EXPECT_EQ(folder.Read("small").size(), 10u);
}

// Would catch: bytes that reach the final name before it is complete.
TEST_F(PosixFileStream, LeavesTheOldFileWhenTheProcessIsKilled) {
    folder.Write("file", "old");
    const std::string block(200 * 1024, 'x');
    const pid_t child = ::fork();
    if (child == 0) {
        eFileStream stream;
        stream.Open(folder / "file", writeNew);
        stream.Write(block.data(), static_cast<int>(block.size()));
        ::kill(::getpid(), SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(folder.Read("file"), "old");
    EXPECT_TRUE(folder.Has("file.tmp"));
    ASSERT_TRUE(xIo::WriteWholeFile(folder / "file", {}));
    EXPECT_FALSE(folder.Has("file.tmp"));
}

TEST_F(PosixFileStream, LeavesTheOldFileAloneUntilItIsClosed) {
    folder.Write("File.mdl", "old");
    std::vector<std::string> events;
    auto previous = platform::SetFileObserver(
        [&](platform::eFileAction, const std::string& path) { events.push_back(path); });
    eFileStream stream;
    ASSERT_TRUE(stream.Open(folder / "file.mdl", writeNew));
    stream.Write("new", 3);
    stream.Flush();
    EXPECT_EQ(folder.Read("File.mdl"), "old");
    EXPECT_EQ(folder.Read("File.mdl.tmp"), "new");
    EXPECT_TRUE(stream.Close());
    EXPECT_TRUE(stream.Close());
    platform::SetFileObserver(previous);
    EXPECT_EQ(folder.Read("File.mdl"), "new");
    EXPECT_FALSE(folder.Has("File.mdl.tmp"));
    EXPECT_FALSE(folder.Has("file.mdl"));
    EXPECT_THAT(events, ElementsAre(folder / "File.mdl"));
}

// Would catch: the .tmp step on the device, which would replace it by a file.
TEST_F(PosixFileStream, DropsEverythingOnTheNullDevice) {
    for (const std::uint32_t flags : {writeNew, writeNew | streamRead, writeNew | streamDirect}) {
        eFileStream stream;
        ASSERT_TRUE(stream.Open("nul", flags, 4));
        stream.Write("0123456789", 10);
        stream.Seek(2, xIo::fromStart);
        stream.WriteValue(std::uint16_t{1});
        stream.Seek(0, xIo::fromEnd);
        stream.Truncate();
        EXPECT_TRUE(stream.Close());
    }
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_THAT(messages.Lines(), IsEmpty());
}

TEST_F(PosixFileStream, AsksBeforeItGivesUp) {
    const xDebug::eHandlingMode mode(xDebug::throwInstead);
    messages.AnswerNext(platform::eBoxAnswer::Retry);
    const std::string path = folder / "no/file";
    EXPECT_THROW(eFileStream().Open(path, writeNew | streamPrompt), xDebug::eEx_Custom);
    xDebug::ClearExceptionFlag();
    const std::string line = "Error writing filestream: " + path + ".tmp";
    EXPECT_THAT(messages.Lines(), ElementsAre(line, line));
    EXPECT_EQ(messages.boxes[0].box.buttons, platform::eBoxButtons::RetryCancel);
    EXPECT_EQ(messages.boxes[0].box.icon, platform::eBoxIcon::Warning);
    EXPECT_TRUE(messages.boxes[0].box.topMost);
    EXPECT_THAT(messages.log, HasSubstr(path + ".tmp - open error!"));
    EXPECT_THAT(messages.log, HasSubstr("No such file or directory"));
}

}  // namespace
