#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

#include "host/values.h"

namespace host {

// A channel as pictures have it: 0 to 1 become 0 to 255, rounded.
inline std::uint8_t ChannelByte(float channel) {
    return static_cast<std::uint8_t>(std::clamp(channel, 0.0F, 1.0F) * 255.0F + 0.5F);
}

// A colour as four bytes: blue, green, red, alpha.
inline void PutPixel(const AColor& color, std::uint8_t* pixel) {
    pixel[0] = ChannelByte(color.b);
    pixel[1] = ChannelByte(color.g);
    pixel[2] = ChannelByte(color.r);
    pixel[3] = ChannelByte(color.a);
}

// Another face of a texture map, which a host need not have: a map that answers for a row of places at once,
// where EvalColor costs more for being asked than for the answer.
class MapRow {
public:
    virtual ~MapRow() = default;

    // By place what Texmap::EvalColor gives, without filter, in a context where the place is the exact
    // coordinates of every channel; as PutPixel has it. `pixels` holds four bytes for each place.
    virtual void EvalRow(std::span<const DPoint2> places, std::span<std::uint8_t> pixels) = 0;

    // The row of texels `row`, counted from the smallest v, of a picture of this size, if the map shows such
    // a picture as it is: what EvalRow has for places of which each lies in its own texel. False, with
    // nothing done, if it doesn't.
    virtual bool CopyRow(int row, int width, int height, std::span<std::uint8_t> pixels) = 0;
};

}  // namespace host
