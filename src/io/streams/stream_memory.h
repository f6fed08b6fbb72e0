#pragma once

#include <cstdint>
#include <span>

#include "io/streams/stream.h"

namespace xIo {

// A stream whose whole content is always in its buffer.
class eMemoryStream : public eStream {
public:
    // A buffer of capacity bytes, that grows by growStep (below 1: by capacity) whenever it is full. The
    // storage behind it is reserved ahead in growing pieces, so n bytes cost time in proportion to n.
    explicit eMemoryStream(int capacity = 1024, int growStep = 0);

    void Flush() override;
    void WriteFrom(eStream& source, int count) override;
    virtual void MakeReadWrite();

    // What was written so far; valid until the next write.
    std::span<const std::uint8_t> Content() const { return {bufferBegin, static_cast<std::size_t>(size)}; }

protected:
    void Advance() override;

private:
    void GrowTo(std::int64_t capacity);
    void Reserve(std::int64_t bytes);

    std::int32_t growStep;
    std::int64_t reserved = 0;  // bytes allocated at bufferBegin
};

}  // namespace xIo
