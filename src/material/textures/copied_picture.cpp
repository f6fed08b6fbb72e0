#include "material/textures/copied_picture.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "io/name.h"
#include "io/streams/byte_reader.h"
#include "io/streams/stream_file.h"
#include "texture/dds_reader.h"

namespace {

using eBytes = std::vector<std::uint8_t>;

constexpr int kTgaHeader = 18;

std::string ExtensionOf(const std::string& path) {
    return eName(path).Part(eName::Extension).Text();
}

// At most `count` bytes from the start on; nothing of a file that can't be read.
eBytes ReadStart(const std::string& path, int count) {
    xIo::eFileStream file;
    eBytes content;
    if (file.Open(path, xIo::streamRead)) {
        content.resize(static_cast<std::size_t>(std::min(count, file.Size())));
        file.Read(content.data(), static_cast<int>(content.size()));
    }
    return content;
}

bool StartsWith(const eBytes& start, std::string_view mark) {
    const std::string_view text(reinterpret_cast<const char*>(start.data()), start.size());
    return text.starts_with(mark);
}

// A tga has no mark of its own, but its first bytes have few values.
bool StartsAsTga(const eBytes& start) {
    constexpr std::array<std::uint8_t, 6> kKinds = {1, 2, 3, 9, 10, 11};
    constexpr std::array<std::uint8_t, 5> kDepths = {8, 15, 16, 24, 32};
    return start.size() >= kTgaHeader && start[1] <= 1 && std::ranges::count(kKinds, start[2]) != 0 &&
           std::ranges::count(kDepths, start[16]) != 0;
}

bool StartsAsAnyPicture(const eBytes& start) {
    using namespace std::string_view_literals;
    const auto marks = {"BM"sv,       "DDS "sv, "8BPS"sv,  "\x89PNG"sv,
                        "\xFF\xD8"sv, "GIF8"sv, "II*\0"sv, "MM\0*"sv};
    return StartsAsTga(start) ||
           std::ranges::any_of(marks, [&](std::string_view mark) { return StartsWith(start, mark); });
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
bool IsCutOffBmp(const eBytes& file) {
    constexpr std::uint32_t kOldHeader = 12;
    xIo::eByteReader reader(file);
    reader.Bytes(10);
    const std::uint64_t pixels = reader.Value<std::uint32_t>();
    const bool isOld = reader.Value<std::uint32_t>() == kOldHeader;
    const std::int64_t width = isOld ? reader.Value<std::uint16_t>() : reader.Value<std::int32_t>();
    const std::int64_t height = isOld ? reader.Value<std::uint16_t>() : reader.Value<std::int32_t>();
    reader.Bytes(2);
    const std::int64_t bits = reader.Value<std::uint16_t>();
    const std::uint32_t compression = isOld ? 0 : reader.Value<std::uint32_t>();
    std::uint64_t length = isOld ? 0 : reader.Value<std::uint32_t>();
    if (compression == 0 || compression == 3 || compression == 6) {
        const std::int64_t row = (width * bits + 31) / 32 * 4;
        const std::int64_t fill = row - (width * bits + 7) / 8;  // some programs leave it out at the end
        length = static_cast<std::uint64_t>(std::max<std::int64_t>(0, std::abs(height) * row - fill));
    }
    return reader.Failed() || pixels + length > file.size();
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
bool IsCutOffTga(const eBytes& file) {
    constexpr int kRuns = 8;
    xIo::eByteReader reader(file);
    const std::size_t text = reader.Value<std::uint8_t>();
    const bool hasMap = reader.Value<std::uint8_t>() == 1;
    const int kind = reader.Value<std::uint8_t>();
    reader.Bytes(2);
    const std::size_t entries = reader.Value<std::uint16_t>();
    const std::size_t bytesPerEntry = (reader.Value<std::uint8_t>() + 7U) / 8;
    reader.Bytes(4);
    const std::uint64_t width = reader.Value<std::uint16_t>();
    const std::uint64_t texels = width * reader.Value<std::uint16_t>();
    const std::size_t bytesPerTexel = (reader.Value<std::uint8_t>() + 7U) / 8;
    reader.Bytes(1);
    reader.Bytes(text + (hasMap ? entries * bytesPerEntry : 0));
    return kind > kRuns ? AreTgaRunsCutOff(reader, texels, bytesPerTexel)
                        : reader.Failed() || texels * bytesPerTexel > reader.Left();
}

}  // namespace

bool IsMisnamedPicture(const std::string& path) {
    const std::string extension = ExtensionOf(path);
    const eBytes start = ReadStart(path, kTgaHeader);
    if (start.empty()) {
        return false;
    }
    return extension == ".bmp"   ? !StartsWith(start, "BM")
           : extension == ".dds" ? !StartsWith(start, "DDS ")
           : extension == ".tga" ? !StartsAsTga(start)
                                 : !StartsAsAnyPicture(start);
}

bool IsCutOffPicture(const std::string& path) {
    constexpr int kWholeFile = 0x7FFFFFFF;
    const std::string extension = ExtensionOf(path);
    const eBytes file = ReadStart(path, kWholeFile);
    if (file.empty() || IsMisnamedPicture(path)) {
        return file.empty();
    }
    return extension == ".bmp"   ? IsCutOffBmp(file)
           : extension == ".tga" ? IsCutOffTga(file)
           : extension == ".dds" ? FirstDamage(ReadDds(file)) != nullptr
                                 : false;
}
