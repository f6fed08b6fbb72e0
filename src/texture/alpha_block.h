// The eight-byte block that holds one channel of 4 by 4 pixels: the alpha of DXT5, either channel of ATI2.
//
//   offset  bits
//        0     8  end a
//        1     8  end b
//        2    48  sixteen codes of 3 bits, row after row, the first pixel lowest
//
// The codes stand for eight values. With a > b, code 0 is a, 1 is b, and 2 to 7 lead from a to b in sevenths.
// With a <= b, 2 to 5 lead from a to b in fifths, and 6 is 0 and 7 is 255. Values between are cut to whole
// bytes, as decoders in software do; graphics hardware keeps some of the fraction.
#pragma once

#include <array>
#include <cstdint>

#include "texture/block_group.h"

// Encodes one channel of sixteen blocks with the least error that the search finds. The candidates per block:
//  1. the block's own range, widened to seven steps where it is smaller: such a block comes out exact;
//  2. that range with each end moved inwards by 0, 1/20 and 2/20 of it, nine pairs of ends;
//  3. the ends that fit the best pair's codes with the least squares;
//  4. the four pairs around the best one that have one end moved by one.
// Blocks with values near 0 or 255 try the six-value form too, with 2 and 4 on the range of their other
// values. Of equal candidates the first wins. A candidate's error is that of the bytes cut or, in blocks of a
// range up to 34, near the sum of the errors of a decoder that cuts and one that keeps the fractions, the
// first counted double: a search for one of them alone would lose on the other what it wins.
//
// Cost: about 85 ns a block on one core, 10 where candidate 1 makes all sixteen exact.
eGroupWords EncodeAlphaBlocks(const eGroupChannel& values);

// Values at most this far from 0 or 255 may be left to the fixed values of the six-value form.
inline constexpr std::uint8_t alphaEdge = 3;

// The eight values that the codes of a block with these ends stand for.
std::array<std::uint8_t, 8> AlphaBlockValues(std::uint8_t a, std::uint8_t b);

// The values of one encoded block's sixteen pixels.
std::array<std::uint8_t, blockPixels> DecodeAlphaBlock(const std::uint8_t* block);
