#include "standalone/loaders/gltf/gltf_images.h"

#include <array>
#include <string_view>

#include "base/ansi.h"
#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/file/gltf_uri.h"

namespace standalone {
namespace {

struct eKind {
    std::string_view mediaType;
    std::string_view ending;
};
constexpr std::array<eKind, 3> kUnread = {
    {{"image/ktx2", ".ktx2"}, {"image/webp", ".webp"}, {"image/avif", ".avif"}}};

}  // namespace

std::string UnreadKind(const tinygltf::Image& image) {
    const std::optional<eDataUri> data = SplitDataUri(image.uri);
    const std::string_view told = data ? data->mediaType : image.mimeType;
    const std::string name = data ? std::string() : LowerAnsi(image.uri);
    for (const eKind& kind : kUnread) {
        if (told == kind.mediaType || name.ends_with(kind.ending)) {
            return std::string(kind.mediaType);
        }
    }
    return "";
}

eGltfImages::eGltfImages(eGltfImport& ownImport)
    : import(ownImport), files(ownImport.scene, ownImport.report), bitmaps(import.model.images.size()) {}

eBitmapMap eGltfImages::Bitmap(int image) {
    std::optional<eBitmapMap>& bitmap = bitmaps[static_cast<std::size_t>(image)];
    if (!bitmap) {
        const std::string& uri = import.model.images[static_cast<std::size_t>(image)].uri;
        bitmap = uri.empty() || IsDataUri(uri) ? Embedded(image) : InFile(image);
    }
    return *bitmap;
}

eBitmapMap eGltfImages::InFile(int image) {
    const std::string& uri = import.model.images[static_cast<std::size_t>(image)].uri;
    return files.InFile(FileOfUri(import.folder, uri), DecodeUri(uri));
}

eBitmapMap eGltfImages::Embedded(int image) {
    const tinygltf::Image& source = import.model.images[static_cast<std::size_t>(image)];
    std::vector<std::uint8_t> decoded;
    std::span<const std::uint8_t> content;
    if (source.bufferView >= 0) {
        content = import.accessors.View(source.bufferView);
    } else if (IsDataUri(source.uri)) {
        content = decoded = DecodeBase64(SplitDataUri(source.uri)->base64).value_or(decoded);
    }
    const std::string name =
        source.name.empty() ? "image_" + std::to_string(image) : import.report.Ansi(source.name);
    return files.Embedded({name, source.mimeType, GltfPlace("images", image), import.path}, content);
}

}  // namespace standalone
