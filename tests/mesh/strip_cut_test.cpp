// How strips are cut to the length of the cache.
#include "mesh/strip_cut.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::ElementsAre;

// A strip from a text: a letter is a real face, a dot a fake one.
eStripList Strip(const std::string& text) {
    eStripList strip;
    for (const char c : text) {
        const auto v = static_cast<std::uint16_t>(c);
        strip.Add({{v, v, v}, 0, c == '.'});
    }
    strip.EndStrip();
    return strip;
}

std::vector<std::string> Pieces(const std::string& text, std::size_t limit) {
    const eStripList pieces = CutStrips(Strip(text), limit);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < pieces.Size(); ++i) {
        texts.emplace_back();
        for (const eStripTriangle& face : pieces[i]) {
            texts.back() += static_cast<char>(face.v[0]);
        }
    }
    return texts;
}

std::vector<std::size_t> PieceSizes(std::size_t faces, std::size_t limit) {
    std::vector<std::size_t> sizes;
    for (const std::string& piece : Pieces(std::string(faces, 'a'), limit)) {
        sizes.push_back(piece.size());
    }
    return sizes;
}

// Would catch: a leftover of three cut off, one of four kept, a strip of just the limit cut.
TEST(CutStrips, KeepsUpToThreeFacesInTheLastPiece) {
    EXPECT_THAT(PieceSizes(18, 18), ElementsAre(18u));
    EXPECT_THAT(PieceSizes(19, 18), ElementsAre(19u));
    EXPECT_THAT(PieceSizes(36, 18), ElementsAre(18u, 18u));
    EXPECT_THAT(PieceSizes(39, 18), ElementsAre(18u, 21u));
    EXPECT_THAT(PieceSizes(40, 18), ElementsAre(18u, 18u, 4u));
    EXPECT_THAT(PieceSizes(3, 1), ElementsAre(1u, 1u, 1u));
}

// Would catch: fake faces counted against the limit, kept at the head of a piece or lost inside one, and
// places that no longer fit once one was dropped.
TEST(CutStrips, KeepsFakeFacesBetweenRealOnesOnly) {
    EXPECT_THAT(Pieces("a.b.c", 18), ElementsAre("a.b.c"));
    EXPECT_THAT(Pieces("a.bcd.efgh.ij.k.lm", 4), ElementsAre("a.bcd", "efgh", "ij.k.lm"));
    EXPECT_THAT(Pieces("abcd.efgh.ijk.l.mnop.qrst", 5), ElementsAre("abcd.e", "fgh.ij", "k.l.mno", "p.qrst"));
    EXPECT_THAT(Pieces("ab.c.d.e", 2), ElementsAre("ab", "c.d.e"));
    EXPECT_THAT(Pieces("a.b.c", 1), ElementsAre("a", "b", "c"));
}

}  // namespace
