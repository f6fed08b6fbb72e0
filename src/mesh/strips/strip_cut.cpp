#include "mesh/strips/strip_cut.h"

#include <algorithm>

namespace {

constexpr std::size_t mostLeftoverToAbsorb = 3;

using eStripFaces = std::span<const eStripTriangle>;

// Moves the first `realFaces` real faces of `rest` into a new piece, with the fake ones between them. Fake
// faces before the first real one have no parity left to flip and are dropped; none can follow the last one,
// since the piece ends with it.
void CutPiece(eStripFaces& rest, std::size_t realFaces, eStripList& pieces) {
    bool hasReal = false;
    while (realFaces > 0) {
        const eStripTriangle& face = rest.front();
        if (!face.isFake || hasReal) {
            pieces.Add(face);
        }
        if (!face.isFake) {
            hasReal = true;
            --realFaces;
        }
        rest = rest.subspan(1);
    }
    pieces.EndStrip();
}

void CutStrip(eStripFaces strip, std::size_t realFaces, std::size_t limit, eStripList& pieces) {
    const std::size_t leftover = realFaces % limit;
    const bool absorbs = leftover <= mostLeftoverToAbsorb;
    const std::size_t times = realFaces / limit;
    for (std::size_t j = 0; j + 1 < times; ++j) {
        CutPiece(strip, limit, pieces);
    }
    CutPiece(strip, absorbs ? limit + leftover : limit, pieces);
    if (!absorbs) {
        CutPiece(strip, leftover, pieces);
    }
}

}  // namespace

eStripList CutStrips(const eStripList& strips, std::size_t limit) {
    eStripList pieces;
    pieces.Reserve(strips.FaceCount());
    for (std::size_t i = 0; i < strips.Size(); ++i) {
        const eStripFaces strip = strips[i];
        const auto realFaces = static_cast<std::size_t>(std::count_if(
            strip.begin(), strip.end(), [](const eStripTriangle& face) { return !face.isFake; }));
        if (realFaces > limit) {
            CutStrip(strip, realFaces, limit, pieces);
            continue;
        }
        for (const eStripTriangle& face : strip) {
            pieces.Add(face);
        }
        pieces.EndStrip();
    }
    return pieces;
}
