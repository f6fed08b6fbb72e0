#include "material/textures/bmp_file.h"

#include <cstring>

#include "io/streams/byte_reader.h"

namespace {

constexpr std::uint8_t kRowFill = 0xFF;
constexpr std::uint32_t kInfoHeaderSize = 40;

std::size_t RowSize(int width, int bitsPerPixel) {
    const std::size_t used = static_cast<std::size_t>(width) * static_cast<std::size_t>(bitsPerPixel / 8);
    return (used + 3) / 4 * 4;
}

class eHeaderWriter {
public:
    explicit eHeaderWriter(std::vector<std::uint8_t>& target) : bytes(target) {}

    template <class T>
    void Put(T value) {
        std::memcpy(bytes.data() + position, &value, sizeof value);
        position += sizeof value;
    }

private:
    std::vector<std::uint8_t>& bytes;
    std::size_t position = 0;
};

void WriteHeader(std::vector<std::uint8_t>& bytes, const eTextureRows& picture, int bitsPerPixel) {
    eHeaderWriter header(bytes);
    header.Put('B');
    header.Put('M');
    header.Put(static_cast<std::uint32_t>(bytes.size()));
    header.Put(std::uint32_t{0});
    header.Put(static_cast<std::uint32_t>(kBmpHeaderSize));
    header.Put(kInfoHeaderSize);
    header.Put(static_cast<std::uint32_t>(picture.width));
    header.Put(static_cast<std::uint32_t>(picture.height));
    header.Put(std::uint16_t{1});
    header.Put(static_cast<std::uint16_t>(bitsPerPixel));
}

// Four bytes at a time; what comes after a pixel writes over the fourth.
void DropAlpha(std::span<const std::uint8_t> pixels, std::uint8_t* target) {
    const std::uint8_t* pixel = pixels.data();
    const std::uint8_t* const last = pixel + pixels.size() - 4;
    for (; pixel != last; pixel += 4, target += 3) {
        std::memcpy(target, pixel, 4);
    }
    std::memcpy(target, last, 3);
}

}  // namespace

std::vector<std::uint8_t> MakeBmp(const eTextureRows& picture, int bitsPerPixel) {
    const std::size_t rowSize = RowSize(picture.width, bitsPerPixel);
    std::vector<std::uint8_t> bytes(kBmpHeaderSize + rowSize * static_cast<std::size_t>(picture.height));
    WriteHeader(bytes, picture, bitsPerPixel);
    std::vector<std::uint8_t> pixels(bitsPerPixel == 32 ? 0 : picture.RowBytes());
    for (int y = 0; rowSize != 0 && y < picture.height; ++y) {
        std::uint8_t* const row = bytes.data() + kBmpHeaderSize + rowSize * static_cast<std::size_t>(y);
        if (bitsPerPixel == 32) {
            picture.fill(y, {row, rowSize});
            continue;
        }
        picture.fill(y, pixels);
        DropAlpha(pixels, row);
        std::fill(row + pixels.size() / 4 * 3, row + rowSize, kRowFill);
    }
    return bytes;
}

std::optional<eBmpPicture> ReadBmp(std::span<const std::uint8_t> bytes, std::string& problem) {
    constexpr std::int32_t kMaxSide = 1 << 20;
    xIo::eByteReader reader(bytes);
    eBmpPicture picture;
    const bool isBmp = reader.Value<char>() == 'B' && reader.Value<char>() == 'M';
    const auto size = reader.Value<std::uint32_t>();
    reader.Bytes(4);
    const auto pixels = reader.Value<std::uint32_t>();
    const auto infoSize = reader.Value<std::uint32_t>();
    const auto width = reader.Value<std::int32_t>();
    const auto height = reader.Value<std::int32_t>();
    reader.Bytes(2);
    picture.bitsPerPixel = reader.Value<std::uint16_t>();
    reader.Bytes(24);
    if (!isBmp || pixels != kBmpHeaderSize || infoSize != kInfoHeaderSize ||
        (picture.bitsPerPixel != 24 && picture.bitsPerPixel != 32)) {
        reader.Fail("this is no picture of 24 or 32 bits with a plain header");
    }
    if (!reader.Failed() &&
        (width < 0 || height < 0 || width > kMaxSide || height > kMaxSide || size != bytes.size() ||
         RowSize(width, picture.bitsPerPixel) * static_cast<std::size_t>(height) != reader.Left())) {
        reader.Fail("the size of the picture does not fit the file");
    }
    if (!reader.Failed()) {
        picture.image = eTextureImage(width, height);
        for (int y = 0; y < height; ++y) {
            const auto row = reader.Bytes(RowSize(width, picture.bitsPerPixel));
            for (int x = 0; x < width; ++x) {
                const auto bytesPerPixel = static_cast<std::size_t>(picture.bitsPerPixel / 8);
                std::uint8_t* target = picture.image.Pixel(x, y);
                target[3] = 0xFF;
                std::memcpy(target, row.data() + static_cast<std::size_t>(x) * bytesPerPixel, bytesPerPixel);
            }
        }
    }
    problem = reader.Problem();
    return reader.Failed() ? std::nullopt : std::optional(std::move(picture));
}
