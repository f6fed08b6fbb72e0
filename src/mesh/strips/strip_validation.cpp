#include "mesh/strips/strip_validation.h"

#include <array>

#include "mesh/strips/strip_triangle_set.h"

namespace {

using eTriangle = std::array<std::uint16_t, 3>;

bool IsDegenerate(const eTriangle& t) {
    return t[0] == t[1] || t[1] == t[2] || t[2] == t[0];
}

// Of the three ways to write down a triangle with its winding, the one that begins with the lowest index.
eTriangle LowestFirst(const eTriangle& t) {
    if (t[0] < t[1] && t[0] < t[2]) {
        return t;
    }
    return t[1] < t[2] ? eTriangle{t[1], t[2], t[0]} : eTriangle{t[2], t[0], t[1]};
}

}  // namespace

bool ValidateTriangles(std::span<const std::uint16_t> input, std::span<const std::uint16_t> output) {
    eTriangleSet known(input.size() / 3);
    for (std::size_t i = 0; i + 2 < input.size(); i += 3) {
        const eTriangle triangle = LowestFirst({input[i], input[i + 1], input[i + 2]});
        known.Insert(triangle[0], triangle[1], triangle[2]);
    }
    for (std::size_t i = 0; i + 2 < output.size(); i += 3) {
        const eTriangle triangle = LowestFirst({output[i], output[i + 1], output[i + 2]});
        if (!IsDegenerate(triangle) && !known.Has(triangle[0], triangle[1], triangle[2])) {
            return false;
        }
    }
    return true;
}
