#include "io/streams/stream.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "base/diagnostics.h"

namespace xIo {

eStream::~eStream() {
    std::free(bufferBegin);
}

void eStream::Skip(int delta) {
    Seek(delta, fromHere);
}

void eStream::Flush() {
    flags &= ~streamDirty;
}

void eStream::Truncate() {
    size = Position();
}

void eStream::Fill() {}

void eStream::Advance() {
    if ((flags & streamDirty) != 0) {
        Flush();
    }
    if (Position() > std::numeric_limits<std::int32_t>::max() - BufferLength()) {
        Fail(__FILE__, __LINE__, "a stream can't hold 2 GiB");
    }
    bufferBase += static_cast<std::int32_t>(cursor - bufferBegin);
    cursor = bufferBegin;
    if ((flags & streamRead) != 0) {
        Fill();
    }
}

void eStream::Seek(int offset, int origin) {
    const std::int64_t start = origin == fromStart ? 0 : origin == fromHere ? Position() : size;
    const std::int64_t target = origin == fromEnd ? start - offset : start + offset;
    if (target == Position()) {
        return;
    }
    if ((flags & streamDirty) != 0) {
        Flush();
    }
    if (target >= bufferBase && target <= std::int64_t{bufferBase} + BufferLength()) {
        cursor = bufferBegin + (target - bufferBase);
        ClearGap();
        return;
    }
    if (target < 0 || target > std::numeric_limits<std::int32_t>::max()) {
        Fail(__FILE__, __LINE__, "a stream has no such position");
    }
    cursor = bufferBegin;
    bufferBase = static_cast<std::int32_t>(target);
    Advance();
}

void eStream::ClearGap() {
    const std::ptrdiff_t gap = std::min<std::ptrdiff_t>(Position() - size, cursor - bufferBegin);
    if (gap > 0) {
        std::memset(cursor - gap, 0, static_cast<std::size_t>(gap));
    }
}

void eStream::WritePieces(const void* data, int count) {
    const auto* from = static_cast<const std::uint8_t*>(data);
    while (count > 0) {
        if (cursor == bufferEnd) {
            Advance();
        }
        const int piece = static_cast<int>(std::min<std::ptrdiff_t>(count, bufferEnd - cursor));
        if (piece == 0) {
            return;  // no buffer: the stream could not be opened
        }
        std::memcpy(cursor, from, static_cast<std::size_t>(piece));
        Wrote(piece);
        from += piece;
        count -= piece;
    }
}

void eStream::WriteBehindBuffer(const void* data, int count) {
    Advance();
    WritePieces(data, count);
}

void eStream::WriteString(const char* text) {
    constexpr int longest = 0xFFFFFF;
    const std::size_t full = std::strlen(text);
    if (full > longest) {
        Fail(__FILE__, __LINE__, "a string in a stream can't hold 16 MiB");
    }
    const int length = static_cast<int>(full);
    if (length < 0xFF) {
        WriteByte(static_cast<std::uint8_t>(length));
    } else {
        WriteValue(static_cast<std::uint32_t>(length) << 8 | 0xFFu);
    }
    Write(text, length);
}

void eStream::Read(void* data, int count) {
    auto* to = static_cast<std::uint8_t*>(data);
    // A buffer may be longer than what is left of the medium.
    const int available = std::clamp(Remaining(), 0, std::max(count, 0));
    for (int left = available; left > 0;) {
        if (cursor == bufferEnd) {
            Advance();
        }
        const int piece = static_cast<int>(std::min<std::ptrdiff_t>(left, bufferEnd - cursor));
        if (piece == 0) {
            break;
        }
        std::memcpy(to, cursor, static_cast<std::size_t>(piece));
        cursor += piece;
        to += piece;
        left -= piece;
    }
    const std::ptrdiff_t missing = count - (to - static_cast<std::uint8_t*>(data));
    if (missing > 0) {
        std::memset(to, 0, static_cast<std::size_t>(missing));
        readPastEnd = true;
    }
}

void eStream::ReadBehindBuffer(void* data, int count) {
    if (Remaining() >= count) {
        Advance();
    }
    Read(data, count);
}

void eStream::WriteFrom(eStream& source, int count) {
    int left = count < 0 ? source.Remaining() : std::min(count, source.Remaining());
    const int longestPiece = std::max(source.BufferLength() / 2, 1);
    while (left > 0) {
        if (source.bufferEnd - source.cursor < std::min(left, longestPiece)) {
            source.Advance();
        }
        const int piece = static_cast<int>(
            std::min<std::ptrdiff_t>(std::min(left, longestPiece), source.bufferEnd - source.cursor));
        if (piece == 0) {
            return;
        }
        Write(source.cursor, piece);
        source.cursor += piece;
        left -= piece;
    }
}

}  // namespace xIo
