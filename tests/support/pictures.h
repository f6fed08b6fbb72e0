// Picture files for tests, as the bytes of the file.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace support {

// Rows from the top, `channels` values a texel: 1 grey, 2 grey and alpha, 3 colour, 4 colour and alpha.
struct ePicture {
    int width = 0;
    int height = 0;
    int channels = 3;
    std::vector<std::uint8_t> values;
};

std::string Png(const ePicture& picture);
std::string Jpg(const ePicture& picture, int quality = 95);
std::string Bmp(const ePicture& picture);
// The file with other bytes at these offsets.
std::string Patched(std::string file, std::initializer_list<std::pair<std::size_t, char>> bytes);
// Without compression.
std::string Tif(const ePicture& picture);
// 32 bits a texel and one level; of a picture with 3 or 4 channels.
std::string Dds(const ePicture& picture);
// Without run lengths.
std::string Tga(const ePicture& picture);

// The 18 bytes at the start of a tga file with 24 bits a texel.
std::string TgaHeader(int width, int height);

}  // namespace support
