#include "gltf/pictures.h"

#include <cmath>

#include "base/ansi.h"
#include "inspect/png_file.h"
#include "messages/utf8_words.h"
#include "platform/folder.h"
#include "run/options.h"
#include "standalone/pictures/image.h"
#include "written/written_file.h"

namespace gltf {

namespace {

constexpr std::string_view kCommon = "$/";

std::uint8_t ByteOf(float value) {
    return static_cast<std::uint8_t>(std::lround(value * 255));
}

ePixelImage PixelsOf(const standalone::eImage& source) {
    ePixelImage image;
    image.Resize(static_cast<unsigned>(source.Width()), static_cast<unsigned>(source.Height()));
    std::uint8_t* target = image.rgba.data();
    for (int y = 0; y < source.Height(); ++y) {
        for (int x = 0; x < source.Width(); ++x) {
            const host::AColor c =
                source.Nearest((x + 0.5) / source.Width(), 1 - (y + 0.5) / source.Height());
            for (const float channel : {c.r, c.g, c.b, c.a}) {
                *target++ = ByteOf(channel);
            }
        }
    }
    return image;
}

void Turn(ePixelImage& image, ePictureUse use) {
    for (std::size_t i = 0; i < image.rgba.size(); i += 4) {
        std::uint8_t* const texel = image.rgba.data() + i;
        if (use == ePictureUse::Normals) {
            texel[0] = texel[3];
            texel[1] = static_cast<std::uint8_t>(255 - texel[1]);
            texel[3] = 255;
        } else if (use == ePictureUse::Specular) {
            texel[3] = texel[0];
            texel[0] = texel[1] = texel[2] = 255;
        }
    }
}

}  // namespace

eName ePictures::CommonFolder(const eName& folder) const {
    if (!commonFolder_.IsEmpty()) {
        return commonFolder_;
    }
    const eName target = eExportOptions().commonTextureTarget;
    for (eName above = folder; !above.IsEmpty();) {
        if (platform::IsFolder((above / target).Text())) {
            return above / target;
        }
        const std::size_t slash = above.Text().find_last_not_of('/');
        const std::size_t cut = above.Text().rfind('/', slash);
        if (cut == std::string::npos || slash == std::string::npos) {
            break;
        }
        above = above.Text().substr(0, cut);
    }
    return {};
}

std::optional<eName> ePictures::FileOf(const eName& folder, const std::string& picture) const {
    const bool isCommon = picture.starts_with(kCommon);
    const eName place =
        isCommon ? CommonFolder(folder) / eName(picture.substr(kCommon.size())) : folder / eName(picture);
    for (const char* ending : {".tga", ".bmp", ".dds"}) {
        eName file = place;
        if (platform::Exists(file.Append(ending).Text())) {
            return file;
        }
    }
    return std::nullopt;
}

int ePictures::Warn(const std::string& picture, ePhrase what) {
    warnings_.push_back(Utf8Words(what, ToUtf8(picture)));
    return -1;
}

int ePictures::Embed(const eName& file, const std::string& picture, ePictureUse use) {
    const auto content = written::ReadWritten(file);
    const standalone::eDecodedImage decoded =
        content ? standalone::DecodeImage(*content) : standalone::eDecodedImage();
    if (!decoded.image) {
        return Warn(picture, ePhrase::BrokenPicture);
    }
    ePixelImage image = PixelsOf(*decoded.image);
    Turn(image, use);
    const std::string png = inspect::MakePng(image);
    const int view =
        glb_.AddBytes({reinterpret_cast<const std::uint8_t*>(png.data()), png.size()}, eBufferUse::Data);
    const int source =
        glb_.Add("images", {{"name", ToUtf8(picture)}, {"mimeType", "image/png"}, {"bufferView", view}});
    return glb_.Add("textures", {{"source", source}});
}

int ePictures::Texture(const eName& folder, const std::string& picture, ePictureUse use) {
    const std::optional<eName> file = FileOf(folder, picture);
    const eName path = file.value_or(folder / eName(picture));
    const auto [entry, isNew] = textures_[use].try_emplace(path.Text(), -1);
    if (isNew) {
        entry->second = file ? Embed(*file, picture, use) : Warn(picture, ePhrase::LacksPicture);
    }
    return entry->second;
}

}  // namespace gltf
