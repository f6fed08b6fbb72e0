#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include "support/pictures.h"

#include <stb/stb_image_write.h>

#include <span>
#include <utility>

#include "texture/compress_image.h"

namespace support {

namespace {

void Append(void* user, void* data, int size) {
    static_cast<std::string*>(user)->append(static_cast<const char*>(data), static_cast<std::size_t>(size));
}

std::string Bytes(std::uint32_t number) {
    return {static_cast<char>(number), static_cast<char>(number >> 8), static_cast<char>(number >> 16),
            static_cast<char>(number >> 24)};
}

}  // namespace

std::string Png(const ePicture& picture) {
    std::string file;
    stbi_write_png_to_func(Append, &file, picture.width, picture.height, picture.channels,
                           picture.values.data(), picture.width * picture.channels);
    return file;
}

std::string Jpg(const ePicture& picture, int quality) {
    std::string file;
    stbi_write_jpg_to_func(Append, &file, picture.width, picture.height, picture.channels,
                           picture.values.data(), quality);
    return file;
}

std::string Bmp(const ePicture& picture) {
    std::string file;
    stbi_write_bmp_to_func(Append, &file, picture.width, picture.height, picture.channels,
                           picture.values.data());
    return file;
}

std::string Patched(std::string file, std::initializer_list<std::pair<std::size_t, char>> bytes) {
    for (const auto& [offset, byte] : bytes) {
        file[offset] = byte;
    }
    return file;
}

std::string Tif(const ePicture& picture) {
    const auto size = static_cast<std::uint32_t>(picture.values.size());
    const auto width = static_cast<std::uint32_t>(picture.width);
    const auto height = static_cast<std::uint32_t>(picture.height);
    const auto channels = static_cast<std::uint32_t>(picture.channels);
    const std::uint32_t hasAlpha = 1 - channels % 2;
    // Width, height, bits, compression, kind of colour, place of the pixels, channels, rows, bytes, alpha.
    const std::pair<std::uint32_t, std::uint32_t> fields[] = {
        {256, width}, {257, height},   {258, 8},      {259, 1},    {262, channels < 3 ? 1 : 2},
        {273, 8},     {277, channels}, {278, height}, {279, size}, {338, 2}};
    std::string file = "II*" + std::string(1, '\0') + Bytes(8 + size);
    file.append(picture.values.begin(), picture.values.end());
    file += Bytes(9 + hasAlpha).substr(0, 2);
    for (const auto& [tag, value] : std::span(fields).first(9 + hasAlpha)) {
        constexpr std::uint32_t kLong = 4, kShort = 3;
        file += Bytes(tag | (tag == 338 ? kShort : kLong) << 16) + Bytes(1) + Bytes(value);
    }
    return file + Bytes(0);
}

std::string Dds(const ePicture& picture) {
    std::string file;
    CompressionOptions options;
    options.g_texture_format = 7;
    options.g_mip_map_type = 32;
    const auto append = [&file](const void* block, std::size_t size, const eMipInfo*, std::intptr_t) {
        file.append(static_cast<const char*>(block), size);
        return 0;
    };
    CompressImage(picture.values.data(), static_cast<unsigned>(picture.width),
                  static_cast<unsigned>(picture.height), picture.width * picture.channels,
                  picture.channels == 4 ? pixelLayoutRgba : pixelLayoutRgb, options, append);
    return file;
}

std::string Tga(const ePicture& picture) {
    std::string file;
    stbi_write_tga_with_rle = 0;
    stbi_write_tga_to_func(Append, &file, picture.width, picture.height, picture.channels,
                           picture.values.data());
    return file;
}

std::string TgaHeader(int width, int height) {
    std::string header(18, '\0');
    header[2] = 2;
    header[12] = static_cast<char>(width);
    header[13] = static_cast<char>(width >> 8);
    header[14] = static_cast<char>(height);
    header[15] = static_cast<char>(height >> 8);
    header[16] = 24;
    return header;
}

}  // namespace support
