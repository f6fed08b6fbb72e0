#include "inspect/png_file.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

#include <optional>

#include "material/textures/bmp_file.h"
#include "messages/utf8_words.h"
#include "texture/dds_reader.h"

namespace inspect {

namespace {

std::optional<ePixelImage> FirstLevel(std::span<const std::uint8_t> content, eBilingual& problem) {
    const eDdsFile file = ReadDds(content);
    if (!file.levels.empty()) {
        return DecodeDdsLevel(content, file, 0);
    }
    const eDdsProblem& first = file.problems.front();
    problem = Utf8Words(ePhrase::PathNoTexture, first.text + " at byte " + std::to_string(first.offset));
    return std::nullopt;
}

std::optional<ePixelImage> PixelsOfBmp(std::span<const std::uint8_t> content, eBilingual& problem) {
    std::string broken;
    const std::optional<eBmpPicture> picture = ReadBmp(content, broken);
    if (!picture) {
        problem = {broken, broken};
        return std::nullopt;
    }
    const eTextureImage& source = picture->image;
    ePixelImage image;
    image.Resize(static_cast<unsigned>(source.width), static_cast<unsigned>(source.height));
    std::uint8_t* target = image.rgba.data();
    for (int y = source.height; y-- > 0;) {
        for (int x = 0; x < source.width; ++x) {
            const std::uint8_t* const pixel = source.Pixel(x, y);
            target[0] = pixel[2];
            target[1] = pixel[1];
            target[2] = pixel[0];
            target[3] = pixel[3];
            target += 4;
        }
    }
    return image;
}

bool IsOpaque(const ePixelImage& image) {
    for (std::size_t i = 3; i < image.rgba.size(); i += 4) {
        if (image.rgba[i] != 0xFF) {
            return false;
        }
    }
    return true;
}

std::vector<std::uint8_t> WithoutAlpha(const ePixelImage& image) {
    std::vector<std::uint8_t> rgb;
    rgb.reserve(image.rgba.size() / 4 * 3);
    for (std::size_t i = 0; i < image.rgba.size(); i += 4) {
        rgb.insert(rgb.end(), {image.rgba[i], image.rgba[i + 1], image.rgba[i + 2]});
    }
    return rgb;
}

void Append(void* user, void* data, int size) {
    static_cast<std::string*>(user)->append(static_cast<const char*>(data), static_cast<std::size_t>(size));
}

std::string Pack(const ePixelImage& image, const std::vector<std::uint8_t>& texels, int channels) {
    std::string png;
    const int width = static_cast<int>(image.width);
    return stbi_write_png_to_func(Append, &png, width, static_cast<int>(image.height), channels,
                                  texels.data(), channels * width) != 0
               ? png
               : std::string();
}

}  // namespace

std::string MakePng(const ePixelImage& image) {
    return IsOpaque(image) ? Pack(image, WithoutAlpha(image), 3) : Pack(image, image.rgba, 4);
}

std::string PictureAsPng(std::span<const std::uint8_t> content, eBilingual& problem) {
    const bool isBmp = content.size() >= 2 && content[0] == 'B' && content[1] == 'M';
    const std::optional<ePixelImage> image =
        isBmp ? PixelsOfBmp(content, problem) : FirstLevel(content, problem);
    std::string png;
    if (image && image->rgba.empty()) {
        problem = Utf8Words(ePhrase::PathNoPixels);
    } else if (image) {
        png = Pack(*image, image->rgba, 4);
        problem = png.empty() ? Utf8Words(ePhrase::NoMemoryForPng) : eBilingual();
    }
    return png;
}

}  // namespace inspect
