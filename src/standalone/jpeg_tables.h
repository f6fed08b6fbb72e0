#pragma once

#include <cstdint>
#include <span>

namespace standalone {

// True if every Huffman table of a jpg file has at most the 256 codes that there are. The image library
// counts on it and writes behind its own tables otherwise. Walks from segment to segment as the library does.
bool HuffmanTablesFit(std::span<const std::uint8_t> file);

}  // namespace standalone
