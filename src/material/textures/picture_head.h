#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// What can be said of a picture without decoding it.
struct ePictureHead {
    std::string_view format;  // "bmp", "tga", "dds", "psd", "png", "jpg", "gif" or "tif"
    // In texels, as the header of a bmp, tga or dds has them; the others have 0.
    std::int64_t width = 0;
    std::int64_t height = 0;
    int bitsPerPixel = 0;
    // The file ends before the picture that its header promises, or, a dds, has a header that can't be true.
    // Kinds whose length only a decoder knows count as whole.
    bool isCutOff = false;
};

// As much of the header as a format can be told by.
inline constexpr int kPictureMarkSize = 18;

// Nothing if the content has the marks of no kind of picture. Looks at the whole content of a tga in runs,
// else at the first bytes.
std::optional<ePictureHead> ReadPictureHead(std::span<const std::uint8_t> content);
