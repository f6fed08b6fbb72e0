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

void WriteHeader(std::vector<std::uint8_t>& bytes, const eTextureImage& image, int bitsPerPixel) {
    eHeaderWriter header(bytes);
    header.Put('B');
    header.Put('M');
    header.Put(static_cast<std::uint32_t>(bytes.size()));
    header.Put(std::uint32_t{0});
    header.Put(static_cast<std::uint32_t>(kBmpHeaderSize));
    header.Put(kInfoHeaderSize);
    header.Put(static_cast<std::uint32_t>(image.width));
    header.Put(static_cast<std::uint32_t>(image.height));
    header.Put(std::uint16_t{1});
    header.Put(static_cast<std::uint16_t>(bitsPerPixel));
}

// A known size is copied without a call.
template <std::size_t bytesPerPixel>
std::uint8_t* CopyRow(const std::uint8_t* pixel, int width, std::uint8_t* target) {
    for (int x = 0; x < width; ++x, pixel += 4, target += bytesPerPixel) {
        std::memcpy(target, pixel, bytesPerPixel);
    }
    return target;
}

}  // namespace

std::vector<std::uint8_t> MakeBmp(const eTextureImage& image, int bitsPerPixel) {
    const std::size_t rowSize = RowSize(image.width, bitsPerPixel);
    std::vector<std::uint8_t> bytes(kBmpHeaderSize + rowSize * static_cast<std::size_t>(image.height));
    WriteHeader(bytes, image, bitsPerPixel);
    for (int y = 0; y < image.height; ++y) {
        std::uint8_t* target = bytes.data() + kBmpHeaderSize + rowSize * static_cast<std::size_t>(y);
        std::uint8_t* const rowEnd = target + rowSize;
        const std::uint8_t* const row = image.Pixel(0, y);
        target =
            bitsPerPixel == 32 ? CopyRow<4>(row, image.width, target) : CopyRow<3>(row, image.width, target);
        std::fill(target, rowEnd, kRowFill);
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
