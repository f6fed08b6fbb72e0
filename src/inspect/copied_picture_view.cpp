#include "inspect/copied_picture_view.h"

#include "io/streams/byte_reader.h"
#include "material/textures/bmp_file.h"
#include "material/textures/picture_head.h"

namespace inspect {

namespace {

// The form in which the export writes a bmp; a damaged one is not a copy.
bool IsPlainBmp(std::span<const std::uint8_t> content) {
    constexpr std::uint32_t kPlainHeader = 40;
    xIo::eByteReader reader(content);
    reader.Bytes(10);
    const auto pixels = reader.Value<std::uint32_t>();
    const auto header = reader.Value<std::uint32_t>();
    reader.Bytes(4);
    const auto height = reader.Value<std::int32_t>();
    reader.Bytes(2);
    const auto bits = reader.Value<std::uint16_t>();
    const auto compression = reader.Value<std::uint32_t>();
    return reader.Failed() || (pixels == kBmpHeaderSize && header == kPlainHeader && height >= 0 &&
                               bits >= 24 && compression == 0);
}

}  // namespace

bool IsCopiedPicture(const std::string& name, std::span<const std::uint8_t> content) {
    const auto head = ReadPictureHead(content);
    return head && head->format != "dds" && (head->format != "tga" || name.ends_with(".tga")) &&
           (head->format != "bmp" || !IsPlainBmp(content));
}

eDescription DescribeCopiedPicture(std::span<const std::uint8_t> content, std::string& problem) {
    const ePictureHead head = ReadPictureHead(content).value_or(ePictureHead{});
    if (head.isCutOff) {
        problem = "the file ends before its picture does";
        return {};
    }
    eDescription description{
        {"kind", "picture"}, {"bytes", content.size()}, {"format", head.format}, {"copied", true}};
    if (head.width != 0) {
        description.update(
            {{"width", head.width}, {"height", head.height}, {"bitsPerPixel", head.bitsPerPixel}});
    }
    return description;
}

}  // namespace inspect
