#include "standalone/loaders/gltf_images.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/ansi.h"
#include "platform/temporary_folder.h"
#include "standalone/loaders/gltf_uri.h"

namespace standalone {
namespace {

using eBytes = std::span<const std::uint8_t>;

struct eImageType {
    std::string_view mediaType;
    std::string_view extension;
    std::string_view magic;
};

constexpr std::array<eImageType, 6> kImageTypes = {{
    {"image/png", ".png", "\x89PNG"},
    {"image/jpeg", ".jpg", "\xFF\xD8\xFF"},
    {"image/bmp", ".bmp", "BM"},
    {"image/gif", ".gif", "GIF8"},
    {"image/webp", ".webp", "RIFF"},
    {"image/ktx2", ".ktx2", "\xABKTX 20"},
}};

// The content knows better than the file what it is.
std::string_view ExtensionOf(eBytes content, const std::string& mediaType) {
    const std::string_view text(reinterpret_cast<const char*>(content.data()), content.size());
    for (const eImageType& type : kImageTypes) {
        if (text.starts_with(type.magic)) {
            return type.extension;
        }
    }
    const auto told = std::ranges::find(kImageTypes, mediaType, &eImageType::mediaType);
    return told == kImageTypes.end() ? std::string_view() : told->extension;
}

// As a file name on every system.
std::string SafeFileName(std::string name) {
    constexpr std::string_view kUnsafe = "/\\:*?\"<>|";
    std::ranges::replace_if(
        name, [&](char byte) { return kUnsafe.find(byte) != std::string_view::npos; }, '_');
    const bool isOnlyDots = name.find_first_not_of('.') == std::string::npos;
    return isOnlyDots ? "_" + name : name;
}

}  // namespace

eGltfImages::eGltfImages(eGltfImport& ownImport) : import(ownImport), bitmaps(import.model.images.size()) {}

eBitmapMap eGltfImages::Bitmap(int image) {
    std::optional<eBitmapMap>& bitmap = bitmaps[static_cast<std::size_t>(image)];
    if (!bitmap) {
        const std::string& uri = import.model.images[static_cast<std::size_t>(image)].uri;
        bitmap = uri.empty() || IsDataUri(uri) ? Embedded(image) : InFile(uri);
    }
    return *bitmap;
}

// A path that code page 1251 can't hold whole is given as the operating system has it.
eBitmapMap eGltfImages::InFile(const std::string& uri) {
    const std::string file = DecodeUri(uri);
    const bool isExact = FromUtf8(file).IsExact() && FromUtf8(import.folder).IsExact();
    eBitmapMap bitmap;
    bitmap.file = import.report.Ansi(file);
    bitmap.onDisk = isExact ? std::string() : FileOfUri(import.folder, uri);
    return bitmap;
}

eBitmapMap eGltfImages::Embedded(int image) {
    const tinygltf::Image& source = import.model.images[static_cast<std::size_t>(image)];
    std::vector<std::uint8_t> decoded;
    if (IsDataUri(source.uri)) {
        decoded = DecodeBase64(SplitDataUri(source.uri)->base64).value_or(decoded);
    }
    const eBytes content = decoded.empty() ? eBytes(source.image) : eBytes(decoded);
    const std::string name = FileName(image, content);
    Write(name, content, GltfPlace("images", image));
    eBitmapMap bitmap;
    bitmap.file = name;
    bitmap.onDisk =
        import.scene.temporaryFiles ? import.scene.temporaryFiles->Path() + "/" + name : std::string();
    return bitmap;
}

// The image's own name, made plain ASCII, with the extension of its type, unlike those of the others in any
// letter case.
std::string eGltfImages::FileName(int image, eBytes content) {
    const tinygltf::Image& source = import.model.images[static_cast<std::size_t>(image)];
    const std::string_view extension = ExtensionOf(content, source.mimeType);
    std::string title = SafeFileName(source.name.empty() ? "image_" + std::to_string(image)
                                                         : import.report.Ansi(source.name));
    if (LowerAnsi(title).ends_with(extension)) {
        title.resize(title.size() - extension.size());
    }
    std::string name = title + std::string(extension);
    for (int number = 2; !takenNames.insert(LowerAnsi(name)).second; ++number) {
        name = title + "_" + std::to_string(number) + std::string(extension);
    }
    return name;
}

void eGltfImages::Write(const std::string& name, eBytes content, const std::string& place) {
    platform::eIoStatus status;
    if (!import.scene.temporaryFiles) {
        status = platform::eTemporaryFolder::Make(import.scene.temporaryFiles);
    }
    if (status.IsOk()) {
        status = import.scene.temporaryFiles->Write(ToUtf8(name), content);
    }
    if (!status.IsOk()) {
        import.report.Problem(place,
                              "the embedded image can't be written to a temporary file: " + status.Text());
    }
}

}  // namespace standalone
