#pragma once

#include <cstdint>
#include <span>

namespace standalone {

// True if every Huffman table of a jpg file has at most the 256 codes that there are, and every scan finds
// the tables that it names. The image library counts on it: it writes behind its own tables otherwise, or
// decodes with what lies in memory. Walks from segment to segment as the library does.
bool HuffmanTablesFit(std::span<const std::uint8_t> file);

}  // namespace standalone
