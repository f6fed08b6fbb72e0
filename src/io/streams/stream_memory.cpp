#include "io/streams/stream_memory.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "base/diagnostics.h"

namespace xIo {

eMemoryStream::eMemoryStream(int capacity, int step) : growStep(std::max(step < 1 ? capacity : step, 1)) {
    flags = streamWrite | streamPrompt;
    GrowTo(std::max(capacity, 1));
}

void eMemoryStream::Flush() {
    size = std::max(size, Position());
    eStream::Flush();
}

void eMemoryStream::WriteFrom(eStream& source, int count) {
    const int whole = count < 0 ? source.Remaining() : std::min(count, source.Remaining());
    const std::int64_t needed = std::int64_t{Position()} + std::max(whole, 0);
    if (needed > BufferLength()) {
        GrowTo(needed);
    }
    eStream::WriteFrom(source, count);
}

void eMemoryStream::MakeReadWrite() {
    flags |= streamWrite | streamPrompt;
}

void eMemoryStream::Advance() {
    // A seek beyond the buffer has moved its base: the content stays at the beginning all the same.
    const std::int64_t position = Position();
    bufferBase = 0;
    GrowTo(std::max(std::int64_t{BufferLength()} + growStep, position));
    cursor = bufferBegin + position;
    ClearGap();
}

void eMemoryStream::GrowTo(std::int64_t capacity) {
    constexpr std::int64_t longest = std::numeric_limits<std::int32_t>::max();
    if (capacity > longest) {
        Fail(__FILE__, __LINE__, "a stream can't hold 2 GiB");
    }
    if (capacity > reserved) {
        Reserve(std::clamp(reserved * 2, capacity, longest));
    }
    bufferEnd = bufferBegin + capacity;
}

void eMemoryStream::Reserve(std::int64_t bytes) {
    const std::ptrdiff_t offset = cursor - bufferBegin;
    auto* storage = static_cast<std::uint8_t*>(std::realloc(bufferBegin, static_cast<std::size_t>(bytes)));
    if (storage == nullptr) {
        Fail(__FILE__, __LINE__, "out of memory for a stream");
    }
    bufferBegin = storage;
    cursor = storage + offset;
    reserved = bytes;
}

}  // namespace xIo
