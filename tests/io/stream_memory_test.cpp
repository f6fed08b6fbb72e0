// Streams in memory: byte for byte at the edges of the buffer.
#include "io/streams/stream_memory.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "support/message_collector.h"

namespace {

using xIo::eMemoryStream;

std::string Text(const eMemoryStream& stream) {
    return {reinterpret_cast<const char*>(stream.Content().data()), stream.Content().size()};
}

std::string Counting(int length) {
    std::string text(static_cast<std::size_t>(length), '\0');
    std::iota(text.begin(), text.end(), '\0');
    return text;
}

// Would catch: content or position lost while the buffer grows, values in another byte order.
TEST(MemoryStream, KeepsContentWhileItGrows) {
    eMemoryStream stream(3, 2);
    stream.Write("ab", 2);
    stream.WriteValue(std::uint32_t{0x64636261});
    stream.WriteValue(1.0f);
    stream.WriteByte('z');
    const std::string block = Counting(1000);
    stream.Write(block.data(), 1000);
    EXPECT_EQ(Text(stream), std::string("ababcd\0\0\x80?z", 11) + block);
    EXPECT_EQ(stream.Position(), 1011);
    EXPECT_EQ(stream.Size(), 1011);
    EXPECT_EQ(stream.Flags() & 0x202, 0x202u);
}

TEST(MemoryStream, PutsALengthBeforeStrings) {
    for (const int length : {0, 1, 254, 255, 256, 70000}) {
        eMemoryStream stream(16, 16);
        const std::string text(static_cast<std::size_t>(length), 'x');
        stream.WriteString(text.c_str());
        const std::string prefix =
            length < 255 ? std::string(1, static_cast<char>(length))
                         : std::string{'\xFF', static_cast<char>(length), static_cast<char>(length >> 8),
                                       static_cast<char>(length >> 16)};
        EXPECT_EQ(Text(stream), prefix + text) << length;
    }
}

// Would catch: a patch that moves the end or loses what stands behind it.
TEST(MemoryStream, PatchesAFieldAndComesBack) {
    eMemoryStream stream(4, 4);
    stream.Write("head....tail", 12);
    stream.Seek(4, xIo::fromStart);
    stream.Write("LONG", 4);
    EXPECT_EQ(stream.Remaining(), 4);
    stream.Seek(0, xIo::fromEnd);
    stream.WriteByte('!');
    stream.Seek(5, xIo::fromEnd);
    EXPECT_EQ(stream.ReadValue<char>(), 't');
    stream.Skip(-5);
    EXPECT_EQ(stream.Position(), 4);
    EXPECT_EQ(Text(stream), "headLONGtail!");
    stream.Truncate();
    EXPECT_EQ(Text(stream), "head");
}

TEST(MemoryStream, FillsAGapWithZeros) {
    eMemoryStream stream(8, 8);
    stream.Write("abcdef", 6);
    stream.Seek(2, xIo::fromStart);
    stream.Truncate();
    stream.Seek(4, xIo::fromStart);
    stream.WriteByte('x');
    stream.Seek(40, xIo::fromStart);
    stream.WriteByte('y');
    EXPECT_EQ(Text(stream), std::string("ab\0\0x", 5).append(35, '\0').append("y"));
}

// Would catch: a read beyond the end that hands out old bytes or runs over the buffer.
TEST(MemoryStream, GivesZerosBeyondTheEnd) {
    eMemoryStream stream(64, 64);
    stream.Write("abcdef", 6);
    stream.Seek(4, xIo::fromStart);
    EXPECT_EQ(stream.ReadValue<std::uint16_t>(), 0x6665);
    EXPECT_FALSE(stream.ReadPastEnd());
    stream.Seek(4, xIo::fromStart);
    EXPECT_EQ(stream.ReadValue<std::uint32_t>(), 0x6665u);
    EXPECT_TRUE(stream.ReadPastEnd());
    for (int round = 0; round < 1000; ++round) {
        EXPECT_EQ(stream.ReadValue<std::uint32_t>(), 0u);
    }
    EXPECT_EQ(stream.Position(), 6);
    char data[4] = "...";
    stream.Read(data, 4);
    EXPECT_EQ(std::string(data, 4), std::string(4, '\0'));
}

TEST(MemoryStream, RefusesWhatItCannotCount) {
    support::eMessageCollector messages;
    const xDebug::eHandlingMode mode(xDebug::throwInstead);
    eMemoryStream stream;
    EXPECT_THROW(stream.Seek(-1, xIo::fromStart), xDebug::eEx_Custom);
    stream.WriteByte(1);
    EXPECT_THROW(stream.Seek(-2147483647, xIo::fromEnd), xDebug::eEx_Custom);
    xDebug::ClearExceptionFlag();
}

}  // namespace
