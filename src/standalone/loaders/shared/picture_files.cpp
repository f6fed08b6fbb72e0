#include "standalone/loaders/shared/picture_files.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/ansi.h"
#include "platform/temporary_folder.h"
#include "platform/utf8_path.h"
#include "standalone/data/file_content.h"
#include "standalone/data/scene_path.h"

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
    const auto told = std::ranges::find_if(kImageTypes, [&](const eImageType& type) {
        return type.mediaType == mediaType || type.extension == mediaType;
    });
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

eBitmapMap ePictureFiles::InFile(const std::string& path, const std::string& name) {
    const std::string own = name.substr(name.find_last_of("/\\") + 1);
    std::string content;
    if (FromUtf8(own).IsExact() || !ReadFileContent(path, content).IsOk()) {
        return {.file = FromUtf8(name).IsExact() ? report.Ansi(name) : PathTextOf(name)};
    }
    const eBytes bytes(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    return Embedded({report.Ansi(own), "", name, path}, bytes);
}

eBitmapMap ePictureFiles::Embedded(const eEmbeddedPicture& picture, eBytes content) {
    const std::string name = FileName(picture.name, ExtensionOf(content, picture.mediaType));
    const platform::eIoStatus status = Write(name, content, picture.origin);
    if (!status.IsOk()) {
        report.Problem(picture.place, eMessageId::ScenePictureNotKept, status.Text());
        return {};
    }
    return {.file = name, .onDisk = scene.temporaryFiles->Path() + "/" + ToUtf8(name)};
}

// The picture's own name, made safe, with the extension of its type, unlike those of the others in any letter
// case.
std::string ePictureFiles::FileName(const std::string& pictureName, std::string_view extension) {
    std::string title = SafeFileName(pictureName);
    if (LowerAnsi(title).ends_with(extension)) {
        title.resize(title.size() - extension.size());
    }
    std::string name = title + std::string(extension);
    for (int number = 2; !takenNames.insert(LowerAnsi(name)).second; ++number) {
        name = title + "_" + std::to_string(number) + std::string(extension);
    }
    return name;
}

// The file gets the time of the one that the picture comes from, so that a later export can tell that a
// texture made of it is up to date. Where the time can't be set, the texture is made again.
platform::eIoStatus ePictureFiles::Write(const std::string& name, eBytes content, const std::string& origin) {
    platform::eIoStatus status;
    if (!scene.temporaryFiles) {
        status = platform::eTemporaryFolder::Make(scene.temporaryFiles);
    }
    if (status.IsOk()) {
        status = scene.temporaryFiles->Write(ToUtf8(name), content);
    }
    std::error_code ignored;
    const auto time = std::filesystem::last_write_time(platform::PathFromUtf8(origin), ignored);
    if (status.IsOk() && !ignored) {
        const std::string file = scene.temporaryFiles->Path() + "/" + ToUtf8(name);
        std::filesystem::last_write_time(platform::PathFromUtf8(file), time, ignored);
    }
    return status;
}

}  // namespace standalone
