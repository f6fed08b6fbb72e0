#include <cstdlib>
#include <cstring>

#include "standalone/pictures/image_readers.h"
#include "standalone/pictures/picture_problem.h"
#include "texture/dds_reader.h"

namespace standalone {

eDecodedImage DecodeDds(std::span<const std::uint8_t> file) {
    const eDdsFile dds = ReadDds(file);
    if (FirstDamage(dds) != nullptr || dds.levels.empty()) {
        return {nullptr, UnreadablePicture()};
    }
    const ePixelImage level = DecodeDdsLevel(file, dds, 0);
    eImage::eTexels texels(std::malloc(level.rgba.size()), std::free);
    if (texels == nullptr) {
        return {nullptr, UnreadablePicture()};
    }
    std::memcpy(texels.get(), level.rgba.data(), level.rgba.size());
    const bool hasAlpha = !AllOpaque(level.rgba.data(), level.rgba.size() / 4);
    return {std::make_unique<eImage>(static_cast<int>(level.width), static_cast<int>(level.height), hasAlpha,
                                     false, std::move(texels)),
            {}};
}

}  // namespace standalone
