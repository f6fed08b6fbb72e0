// Byte streams: a buffer over a medium. The file formats are little-endian by the byte order of the machine.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace xIo {

static_assert(std::endian::native == std::endian::little, "values are written in memory order");

// Bits of eStream::Flags; those from streamRead to streamDirect are given at open.
enum eFileOpenFlags : std::uint32_t {
    streamRead = 0x0001,        // moving the buffer fills it from the medium
    streamWrite = 0x0002,       // reading and writing, created if missing
    streamTruncate = 0x0004,    // an existing file is cut to length 0 at open
    streamPrompt = 0x0200,      // a failed open asks the user
    streamDirect = 0x0400,      // under the final name, without the .tmp step
    streamOpenFailed = 0x2000,  // set by the stream
    streamDirty = 0x4000,       // the buffer holds bytes not yet in the medium
};

enum eOrigin { fromStart = 0, fromHere = 1, fromEnd = 2 };  // fromEnd counts backward from the size

// Positions and sizes are 32-bit: a stream holds less than 2 GiB, and one that would grow beyond is fatal.
// One thread at a time. A stream without buffer (its open failed) drops what is written and reads zeros.
class eStream {
public:
    virtual ~eStream();
    eStream(const eStream&) = delete;
    eStream& operator=(const eStream&) = delete;

    virtual void Skip(int delta);
    virtual void Flush();
    // Cuts the content at the current position.
    virtual void Truncate();
    // Copies count bytes (negative: all the rest) from the source's position on. Not from itself.
    virtual void WriteFrom(eStream& source, int count);

    int Size() const { return size; }
    int Position() const { return static_cast<int>(cursor - bufferBegin) + bufferBase; }
    int Remaining() const { return size - Position(); }
    std::uint32_t Flags() const { return flags; }
    // A read went beyond the end: the bytes missing were given as zeros.
    bool ReadPastEnd() const { return readPastEnd; }

    void Seek(int offset, int origin);

    void Write(const void* data, int count) {
        if (count <= bufferEnd - cursor && count > 0) {
            std::memcpy(cursor, data, static_cast<std::size_t>(count));
            Wrote(count);
        } else {
            WritePieces(data, count);
        }
    }
    // The bytes in memory order; a value is never split over two buffers.
    template <class T>
    requires std::is_trivially_copyable_v<T>
    void WriteValue(const T& value) {
        if (bufferEnd - cursor < static_cast<std::ptrdiff_t>(sizeof value)) {
            WriteBehindBuffer(&value, sizeof value);
            return;
        }
        std::memcpy(cursor, &value, sizeof value);
        Wrote(sizeof value);
    }
    void WriteByte(std::uint8_t value) { WriteValue(value); }
    // A length (one byte below 255; else 0xFF and three bytes) and the bytes without terminator.
    void WriteString(const char* text);

    // The caller asks for no more than Remaining; see ReadPastEnd.
    void Read(void* data, int count);
    template <class T>
    requires std::is_trivially_copyable_v<T> T ReadValue() {
        T value;
        const auto count = static_cast<std::ptrdiff_t>(sizeof value);
        if (bufferEnd - cursor < count || Remaining() < count) {
            ReadBehindBuffer(&value, sizeof value);
            return value;
        }
        std::memcpy(&value, cursor, sizeof value);
        cursor += sizeof value;
        return value;
    }

protected:
    eStream() = default;

    // Moves the buffer on to the current position.
    virtual void Advance();
    // Reads the buffer from the medium.
    virtual void Fill();

    // After a move beyond the end: the bytes between, as far as they lie in the buffer, become zeros, so that
    // a gap has the same bytes in every run.
    void ClearGap();

    int BufferLength() const { return static_cast<int>(bufferEnd - bufferBegin); }

    std::int32_t size = 0;
    std::int32_t bufferBase = 0;  // position of the buffer's first byte in the medium
    std::uint32_t flags = 0;
    std::uint8_t* bufferBegin = nullptr;  // owned (malloc)
    std::uint8_t* cursor = nullptr;
    std::uint8_t* bufferEnd = nullptr;
    bool readPastEnd = false;

private:
    void Wrote(int count) {
        cursor += count;
        const int position = Position();
        size = size > position ? size : position;
        flags |= streamDirty;
    }
    void WritePieces(const void* data, int count);
    void WriteBehindBuffer(const void* data, int count);
    void ReadBehindBuffer(void* data, int count);
};

}  // namespace xIo
