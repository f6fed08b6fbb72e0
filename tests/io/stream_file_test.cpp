// Streams on disk: the bytes at the edges of the buffer, and the promise that a final name always holds a
// complete file.
#include "io/streams/stream_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <random>
#include <string>

#include "io/file_stream_fixture.h"
#include "io/streams/stream_memory.h"
#include "io/streams/whole_file.h"
#include "platform/file_events.h"
#include "platform/write_fence.h"

namespace {

using namespace io_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FileStream : public eFileStreamTest {};

// Would catch: a patch on a buffer without the old bytes, a flush of stale ones, a wrong end.
TEST_F(FileStream, DoesAsAPlainArrayDoes) {
    std::mt19937 random(7);
    for (const int bufferSize : {4, 16, 64, 1000}) {
        std::string plain;
        eFileStream stream;
        ASSERT_TRUE(stream.Open(folder / "file", streamRead | writeNew, bufferSize));
        for (int step = 0; step < 2000; ++step) {
            const auto position = static_cast<std::size_t>(stream.Position());
            const std::size_t length = random() % 20 + 1;
            if (random() % 3 == 0) {
                const std::size_t target = random() % (plain.size() + 1);
                stream.Seek(static_cast<int>(target), xIo::fromStart);
            } else if (random() % 3 == 0 && position + length <= plain.size()) {
                std::string read(length, '\0');
                stream.Read(read.data(), static_cast<int>(length));
                ASSERT_EQ(read, plain.substr(position, length));
            } else {
                const std::string data(length, static_cast<char>('a' + step % 26));
                stream.Write(data.data(), static_cast<int>(length));
                plain.replace(position, std::min(length, plain.size() - position), data);
            }
            ASSERT_EQ(stream.Size(), static_cast<int>(plain.size()));
        }
        EXPECT_TRUE(stream.Close());
        EXPECT_EQ(folder.Read("file"), plain) << bufferSize;
    }
}

TEST_F(FileStream, ReadsWithABufferOfTheFilesLength) {
    folder.Write("Short", "abc");
    folder.Write("empty", "");
    eFileStream stream;
    ASSERT_TRUE(stream.Open(folder / "short", streamRead));
    EXPECT_EQ(stream.Size(), 3);
    EXPECT_EQ(stream.ReadValue<std::uint16_t>(), 0x6261);
    EXPECT_EQ(stream.ReadValue<std::uint64_t>(), std::uint64_t{'c'});
    EXPECT_TRUE(stream.ReadPastEnd());
    ASSERT_TRUE(stream.Open(folder / "empty", streamRead));
    EXPECT_EQ(stream.ReadValue<std::uint32_t>(), 0u);
    EXPECT_TRUE(stream.Close());
}

TEST_F(FileStream, CutsTheFileAtItsPosition) {
    folder.Write("file", "0123456789");
    eFileStream stream;
    ASSERT_TRUE(stream.Open(folder / "file", streamRead | streamWrite | streamDirect, 4));
    stream.Seek(6, xIo::fromStart);
    stream.Truncate();
    stream.Write("x", 1);
    EXPECT_TRUE(stream.Close());
    EXPECT_EQ(folder.Read("file"), "012345x");
}

TEST_F(FileStream, DropsWritesAfterAFailedOpen) {
    eFileStream stream;
    EXPECT_FALSE(stream.Open(folder / "no/such/folder", writeNew));
    EXPECT_NE(stream.Flags() & 0x2000, 0u);
    xIo::eMemoryStream text;
    text.Write("text", 4);
    text.Seek(0, xIo::fromStart);
    stream.WriteFrom(text, -1);
    stream.WriteString("x");
    stream.WriteValue(1);
    EXPECT_FALSE(stream.Close());
    EXPECT_THAT(messages.Lines(), IsEmpty());
}

// Would catch: a rename that fails silently, or a retry that does not try.
TEST_F(FileStream, AsksWhenTheFinalNameCannotBeGiven) {
    const xDebug::eHandlingMode mode(xDebug::throwInstead);
    folder.Write("file/blocks", "the name");
    eFileStream stream;
    ASSERT_TRUE(stream.Open(folder / "file", writeNew));
    stream.Write("new", 3);
    messages.AnswerNext(platform::eBoxAnswer::Retry);
    EXPECT_THROW(stream.Close(), xDebug::eEx_Custom);
    xDebug::ClearExceptionFlag();
    const std::string line = "Error writing filestream: " + (folder / "file");
    EXPECT_THAT(messages.Lines(), ElementsAre(line, line));
    EXPECT_EQ(folder.Read("file.tmp"), "new");
    EXPECT_EQ(folder.Read("file/blocks"), "the name");
}

TEST_F(FileStream, IsToldWhenTheFenceForbidsIt) {
    platform::AddWriteRoot(folder / "game");
    eFileStream stream;
    EXPECT_FALSE(stream.Open(folder / "game/../file", writeNew | streamPrompt));
    platform::ClearWriteRoots();
    EXPECT_THAT(messages.Lines(),
                ElementsAre("Ошибка: Не удалось записать файл '" + (folder / "game/../file") +
                            "': путь лежит за пределами ресурсов игры."));
    EXPECT_FALSE(folder.Has("file.tmp"));
}

TEST_F(FileStream, CopiesWholeFiles) {
    const std::string content = std::string(600 * 1024, 'a') + "end";
    folder.Write("Wood.TGA", content);
    std::filesystem::last_write_time(folder / "Wood.TGA",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(24));
    std::vector<platform::eFileAction> actions;
    auto previous = platform::SetFileObserver(
        [&](platform::eFileAction action, const std::string&) { actions.push_back(action); });
    EXPECT_TRUE(xIo::CopyWholeFile(folder / "wood.tga", folder / "copy.tga"));
    platform::SetFileObserver(previous);
    EXPECT_EQ(actions.back(), platform::eFileAction::Copied);
    EXPECT_EQ(folder.Read("copy.tga"), content);
    EXPECT_LT(std::filesystem::last_write_time(folder / "Wood.TGA"),
              std::filesystem::last_write_time(folder / "copy.tga"));
    EXPECT_TRUE(xIo::CopyWholeFile(folder / "wood.tga", folder / "wood.tga"));
    EXPECT_EQ(folder.Read("Wood.TGA"), content);
    EXPECT_FALSE(xIo::CopyWholeFile(folder / "absent", folder / "copy.tga"));
    EXPECT_THAT(messages.Lines(), ElementsAre(HasSubstr("Не удалось прочитать файл")));
    EXPECT_EQ(folder.Read("copy.tga"), content);
}

}  // namespace
