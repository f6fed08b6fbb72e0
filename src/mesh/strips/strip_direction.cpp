#include "mesh/strips/strip_direction.h"

#include <utility>

namespace {

bool Has(const eStripTriangle& face, std::uint16_t v) {
    return face.v[0] == v || face.v[1] == v || face.v[2] == v;
}

}  // namespace

bool StartsClockwise(std::span<const eStripTriangle> strip) {
    const eStripTriangle& first = strip[0];
    std::uint16_t x = first.v[0];
    std::uint16_t y = first.v[1];
    std::uint16_t z = first.v[2];
    // The strip leaves behind the vertex that the second face lacks, so it begins there.
    if (strip.size() > 1 && Has(strip[1], x)) {
        if (!Has(strip[1], y)) {
            std::swap(x, y);
        } else if (!Has(strip[1], z)) {
            std::swap(x, z);
        }
    }
    if (strip.size() > 2) {
        const int shared = Has(strip[2], x) + Has(strip[2], y) + Has(strip[2], z);
        if (shared == 1 && Has(strip[2], y)) {
            y = z;
        }
    }
    // x followed by y, once round: the corner behind the last is the first.
    if (first.v[0] == x) {
        return first.v[1] == y;
    }
    return first.v[1] == x ? first.v[2] == y : first.v[0] == y;
}
