#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include "support/pictures.h"

#include <stb/stb_image_write.h>

namespace support {

namespace {

void Append(void* user, void* data, int size) {
    static_cast<std::string*>(user)->append(static_cast<const char*>(data), static_cast<std::size_t>(size));
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
