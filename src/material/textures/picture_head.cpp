#include "material/textures/picture_head.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "io/streams/byte_reader.h"
#include "texture/dds_reader.h"

namespace {

using eBytes = std::span<const std::uint8_t>;
using namespace std::string_view_literals;

// A tga has no mark of its own, but its first bytes have few values.
bool StartsAsTga(eBytes content) {
    constexpr std::array<std::uint8_t, 6> kKinds = {1, 2, 3, 9, 10, 11};
    constexpr std::array<std::uint8_t, 5> kDepths = {8, 15, 16, 24, 32};
    return content.size() >= kPictureMarkSize && content[1] <= 1 &&
           std::ranges::count(kKinds, content[2]) != 0 && std::ranges::count(kDepths, content[16]) != 0;
}

std::string_view FormatOf(eBytes content) {
    constexpr std::pair<std::string_view, std::string_view> kMarks[] = {
        {"BM"sv, "bmp"},       {"DDS "sv, "dds"}, {"8BPS"sv, "psd"},  {"\x89PNG"sv, "png"},
        {"\xFF\xD8"sv, "jpg"}, {"GIF8"sv, "gif"}, {"II*\0"sv, "tif"}, {"MM\0*"sv, "tif"}};
    const std::string_view text(reinterpret_cast<const char*>(content.data()), content.size());
    for (const auto& [mark, format] : kMarks) {
        if (text.starts_with(mark)) {
            return format;
        }
    }
    return StartsAsTga(content) ? "tga"sv : ""sv;
}

//   offset  size  field
//   10      4     offset of the pixels
//   14      4     size of the info header: 12 for the oldest kind, whose sides have two bytes each
//   18      4     width
//   22      4     height; below 0 the rows run from the top
//   26      2     planes
//   28      2     bits per pixel
//   30      4     compression: 0, 3 and 6 have rows of equal length
//   34      4     length of the pixels in bytes, 0 where it follows from the rest
void ReadBmpHead(ePictureHead& head, eBytes content) {
    constexpr std::uint32_t kOldHeader = 12;
    xIo::eByteReader reader(content);
    reader.Bytes(10);
    const std::uint64_t pixels = reader.Value<std::uint32_t>();
    const bool isOld = reader.Value<std::uint32_t>() == kOldHeader;
    head.width = isOld ? reader.Value<std::uint16_t>() : reader.Value<std::int32_t>();
    head.height =
        std::abs(isOld ? std::int64_t{reader.Value<std::uint16_t>()} : reader.Value<std::int32_t>());
    reader.Bytes(2);
    head.bitsPerPixel = reader.Value<std::uint16_t>();
    const std::uint32_t compression = isOld ? 0 : reader.Value<std::uint32_t>();
    std::uint64_t length = isOld ? 0 : reader.Value<std::uint32_t>();
    if (compression == 0 || compression == 3 || compression == 6) {
        const std::int64_t row = (head.width * head.bitsPerPixel + 31) / 32 * 4;
        // Some programs leave the fill of the last row out.
        const std::int64_t fill = row - (head.width * head.bitsPerPixel + 7) / 8;
        length = static_cast<std::uint64_t>(std::max<std::int64_t>(0, head.height * row - fill));
    }
    head.isCutOff = reader.Failed() || pixels + length > content.size();
}

// True if the runs end early.
bool AreTgaRunsCutOff(xIo::eByteReader& reader, std::uint64_t texels, std::size_t bytesPerTexel) {
    while (texels > 0 && !reader.Failed()) {
        const int head = reader.Value<std::uint8_t>();
        const bool isRepeated = (head & 0x80) != 0;
        const auto count = static_cast<std::uint64_t>(head & 0x7F) + 1;
        reader.Bytes(isRepeated ? bytesPerTexel : static_cast<std::size_t>(count) * bytesPerTexel);
        texels -= std::min(texels, count);
    }
    return reader.Failed();
}

//   offset  size  field
//   0       1     length of the text behind the header
//   1       1     1 with a colour map
//   2       1     kind; above 8 the texels stand in runs
//   5       2     entries of the colour map
//   7       1     bits of an entry
//   12      2     width
//   14      2     height
//   16      1     bits per texel
void ReadTgaHead(ePictureHead& head, eBytes content) {
    constexpr int kRuns = 8;
    xIo::eByteReader reader(content);
    const std::size_t text = reader.Value<std::uint8_t>();
    const bool hasMap = reader.Value<std::uint8_t>() == 1;
    const int kind = reader.Value<std::uint8_t>();
    reader.Bytes(2);
    const std::size_t entries = reader.Value<std::uint16_t>();
    const std::size_t bytesPerEntry = (reader.Value<std::uint8_t>() + 7U) / 8;
    reader.Bytes(4);
    head.width = reader.Value<std::uint16_t>();
    head.height = reader.Value<std::uint16_t>();
    head.bitsPerPixel = reader.Value<std::uint8_t>();
    const auto texels = static_cast<std::uint64_t>(head.width * head.height);
    const std::size_t bytesPerTexel = (static_cast<unsigned>(head.bitsPerPixel) + 7U) / 8;
    reader.Bytes(1);
    reader.Bytes(text + (hasMap ? entries * bytesPerEntry : 0));
    head.isCutOff = kind > kRuns ? AreTgaRunsCutOff(reader, texels, bytesPerTexel)
                                 : reader.Failed() || texels * bytesPerTexel > reader.Left();
}

void ReadDdsHead(ePictureHead& head, eBytes content) {
    const eDdsFile file = ReadDds(content);
    head.isCutOff = FirstDamage(file) != nullptr;
}

}  // namespace

std::optional<ePictureHead> ReadPictureHead(std::span<const std::uint8_t> content) {
    ePictureHead head{.format = FormatOf(content)};
    if (head.format.empty()) {
        return std::nullopt;
    }
    if (head.format == "bmp") {
        ReadBmpHead(head, content);
    } else if (head.format == "tga") {
        ReadTgaHead(head, content);
    } else if (head.format == "dds") {
        ReadDdsHead(head, content);
    }
    return head;
}
