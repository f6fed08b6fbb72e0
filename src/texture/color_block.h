// The eight-byte block that holds the colours of 4 by 4 pixels in DXT1, DXT3 and DXT5.
//
//   offset  bits
//        0    16  colour a: red in the upper 5 bits, green in 6, blue in 5
//        2    16  colour b
//        4    32  sixteen codes of 2 bits, row after row, the first pixel lowest
//
// Code 0 is a, 1 is b, 2 is a third of the way from a to b, 3 two thirds. In DXT1 that needs a > b as
// numbers; with a <= b, 2 is halfway and 3 is transparent black. Channels between are cut to whole bytes, as
// in alpha blocks; the search keeps their fractions, which suits decoders of either kind.
#pragma once

#include <array>
#include <cstdint>

#include "texture/block_group.h"
#include "texture/color_bits.h"

// Encodes the colours of sixteen blocks; a block never needs the form with a transparent code. Per block:
//  1. the pixels are laid on the principal axis of their weighted colours, which gives each a code from one
//     extreme of the axis to the other;
//  2. twice: the ends that fit the codes with the least squares, rounded to what the file can hold (each
//     neighbour of the first end with the best second end for it), then new codes by the nearest point of the
//     line between those ends;
//  3. the best of these with one end's green moved by one, the finest and as a rule weightiest channel.
// The ends with the least weighted error count. A block of one colour takes FlatColorBlock.
//
// Cost: about 90 ns a block on one core, 110 in groups with red in them, 5 where all sixteen are flat.
eGroupWords EncodeColorBlocks(const eBlockGroup& group, const eColorWeights& weights);

// The four colours, R, G, B, A, of the codes of an encoded block; alwaysFour for DXT3 and DXT5.
std::array<std::array<std::uint8_t, 4>, 4> ColorBlockValues(const std::uint8_t* block, bool alwaysFour);

// Sixteen pixels, R, G, B, A each.
std::array<std::array<std::uint8_t, 4>, blockPixels> DecodeColorBlock(const std::uint8_t* block,
                                                                      bool alwaysFour);
