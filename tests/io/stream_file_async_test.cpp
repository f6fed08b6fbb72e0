// The overlapped reader against plain memory.
#include "io/streams/stream_file_async.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "support/temp_folder.h"

namespace {

using xIo::xRepository::eFileStreamReadAsync;

std::string Noise(std::size_t size) {
    std::mt19937 random(5);
    std::string text(size, '\0');
    for (char& c : text) {
        c = static_cast<char>(random());
    }
    return text;
}

std::string ReadOn(xIo::eStream& stream, int count) {
    std::string text(static_cast<std::size_t>(count), '\0');
    stream.Read(text.data(), count);
    return text;
}

// Would catch: halves in the wrong order, a last piece that is short, one byte lost at a border.
TEST(StreamFileAsync, ReadsOn) {
    const support::eTempFolder folder;
    for (const int length : {0, 1, 0x800, 0x7FFFF, 0x80000, 0x80001, 0x100000, 0x100001, 1900000}) {
        const auto size = static_cast<std::size_t>(length);
        const std::string content = Noise(size);
        folder.Write("file", content);
        eFileStreamReadAsync stream;
        ASSERT_TRUE(stream.Open(folder / "file"));
        std::string read;
        while (stream.Remaining() > 0) {
            read += ReadOn(stream, std::min(stream.Remaining(), 100003));
        }
        EXPECT_EQ(read, content) << size;
        EXPECT_TRUE(stream.Status().IsOk());
    }
}

TEST(StreamFileAsync, MovesAnywhere) {
    const support::eTempFolder folder;
    const std::string content = Noise(2500000);
    folder.Write("file", content);
    eFileStreamReadAsync stream;
    ASSERT_TRUE(stream.Open(folder / "file"));
    std::mt19937 random(9);
    for (int step = 0; step < 300; ++step) {
        const std::size_t at = random() % content.size();
        const std::size_t count = std::min<std::size_t>(random() % 700000, content.size() - at);
        if (step % 3 == 0) {
            stream.Seek(static_cast<int>(at), xIo::fromStart);
        }
        const auto position = static_cast<std::size_t>(stream.Position());
        const auto wanted = static_cast<int>(std::min(count, content.size() - position));
        ASSERT_EQ(ReadOn(stream, wanted), content.substr(position, static_cast<std::size_t>(wanted))) << step;
    }
    stream.Seek(0x7FFFE, xIo::fromStart);
    EXPECT_EQ(stream.ReadValue<std::uint32_t>() & 0xFF, static_cast<std::uint8_t>(content[0x7FFFE]));
    EXPECT_EQ(stream.Position(), 0x80002);
}

TEST(StreamFileAsync, TellsWhatCantBeRead) {
    const support::eTempFolder folder;
    eFileStreamReadAsync stream;
    EXPECT_FALSE(stream.Open(folder / "none"));
    EXPECT_FALSE(stream.Open(folder.Path()));
    EXPECT_NE(stream.Flags() & xIo::streamOpenFailed, 0U);
    EXPECT_EQ(ReadOn(stream, 3), std::string(3, '\0'));
    folder.Write("file", Noise(3000000));
    ASSERT_TRUE(stream.Open(folder / "file"));
    std::filesystem::resize_file(folder / "file", 10);
    stream.Seek(2000000, xIo::fromStart);
    EXPECT_EQ(ReadOn(stream, 3), std::string(3, '\0'));
}

}  // namespace
