#include "standalone/loaders/gltf/gltf_images.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "base/ansi.h"
#include "platform/temporary_folder.h"
#include "platform/utf8_path.h"
#include "standalone/data/file_content.h"
#include "standalone/loaders/gltf/file/gltf_uri.h"

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
        bitmap = uri.empty() || IsDataUri(uri) ? Embedded(image) : InFile(image);
    }
    return *bitmap;
}

eBitmapMap eGltfImages::InFile(int image) {
    const std::string& uri = import.model.images[static_cast<std::size_t>(image)].uri;
    const std::string file = DecodeUri(uri);
    eBitmapMap bitmap;
    bitmap.file = import.report.Ansi(file);
    if (FromUtf8(file).IsExact() && FromUtf8(import.folder).IsExact()) {
        return bitmap;
    }
    const std::string path = FileOfUri(import.folder, uri);
    std::string content;
    if (!ReadFileContent(path, content).IsOk()) {
        return bitmap;
    }
    const std::string name = bitmap.file.substr(bitmap.file.find_last_of("/\\") + 1);
    return InTemporaryFile(image, name,
                           {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()}, path);
}

eBitmapMap eGltfImages::Embedded(int image) {
    const tinygltf::Image& source = import.model.images[static_cast<std::size_t>(image)];
    std::vector<std::uint8_t> decoded;
    if (IsDataUri(source.uri)) {
        decoded = DecodeBase64(SplitDataUri(source.uri)->base64).value_or(decoded);
    }
    const std::string name =
        source.name.empty() ? "image_" + std::to_string(image) : import.report.Ansi(source.name);
    return InTemporaryFile(image, name, decoded.empty() ? eBytes(source.image) : eBytes(decoded),
                           import.path);
}

eBitmapMap eGltfImages::InTemporaryFile(int image, const std::string& imageName, eBytes content,
                                        const std::string& origin) {
    const std::string& mediaType = import.model.images[static_cast<std::size_t>(image)].mimeType;
    const std::string name = FileName(imageName, ExtensionOf(content, mediaType));
    const platform::eIoStatus status = Write(name, content, origin);
    if (!status.IsOk()) {
        import.report.Problem(GltfPlace("images", image),
                              "the image can't be written to a temporary file: " + status.Text());
        return {};
    }
    return {.file = name, .onDisk = import.scene.temporaryFiles->Path() + "/" + ToUtf8(name)};
}

// The image's own name, made safe, with the extension of its type, unlike those of the others in any letter
// case.
std::string eGltfImages::FileName(const std::string& imageName, std::string_view extension) {
    std::string title = SafeFileName(imageName);
    if (LowerAnsi(title).ends_with(extension)) {
        title.resize(title.size() - extension.size());
    }
    std::string name = title + std::string(extension);
    for (int number = 2; !takenNames.insert(LowerAnsi(name)).second; ++number) {
        name = title + "_" + std::to_string(number) + std::string(extension);
    }
    return name;
}

// The file gets the time of the one that the image comes from, so that a later export can tell that a texture
// made of it is up to date. Where the time can't be set, the texture is made again.
platform::eIoStatus eGltfImages::Write(const std::string& name, eBytes content, const std::string& origin) {
    platform::eIoStatus status;
    if (!import.scene.temporaryFiles) {
        status = platform::eTemporaryFolder::Make(import.scene.temporaryFiles);
    }
    if (status.IsOk()) {
        status = import.scene.temporaryFiles->Write(ToUtf8(name), content);
    }
    std::error_code ignored;
    const auto time = std::filesystem::last_write_time(platform::PathFromUtf8(origin), ignored);
    if (status.IsOk() && !ignored) {
        const std::string file = import.scene.temporaryFiles->Path() + "/" + ToUtf8(name);
        std::filesystem::last_write_time(platform::PathFromUtf8(file), time, ignored);
    }
    return status;
}

}  // namespace standalone
