#include "standalone/loaders/assimp/assimp_pictures.h"

#include <algorithm>
#include <filesystem>
#include <span>

#include "base/ansi.h"
#include "platform/utf8_path.h"
#include "standalone/data/scene_path.h"

namespace standalone {
namespace {

std::string BareName(const std::string& path) {
    return path.substr(path.find_last_of('/') + 1);
}

bool IsFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(platform::PathFromUtf8(path), ignored);
}

std::span<const std::uint8_t> BytesOf(const aiTexture& texture) {
    return {reinterpret_cast<const std::uint8_t*>(texture.pcData), texture.mWidth};
}

}  // namespace

eAssimpPictures::eAssimpPictures(eAssimpImport& ownImport)
    : import(ownImport), files(ownImport.scene, ownImport.report) {}

eBitmapMap eAssimpPictures::Bitmap(const std::string& name, const std::string& material) {
    const auto found = known.find(name);
    return found != known.end() ? found->second : known.emplace(name, Find(name, material)).first->second;
}

eBitmapMap eAssimpPictures::Find(const std::string& name, const std::string& material) {
    if (const aiTexture* texture = import.file.GetEmbeddedTexture(name.c_str())) {
        return Embedded(*texture, name);
    }
    std::string path = name;
    std::ranges::replace(path, '\\', '/');
    std::string tried;
    const std::vector<std::string> places = PlacesOf(path);
    for (const std::string& place : places) {
        if (IsFile(place)) {
            return files.InFile(place, NameFromScene(place));
        }
        tried += (tried.empty() ? "" : ", ") + place;
    }
    import.report.Notice(eMessageId::ImportNoPicture, Utf8Words(ePhrase::LookedFor, material, name, tried));
    return {.file = import.report.Ansi(path), .tried = places};
}

std::vector<std::string> eAssimpPictures::PlacesOf(const std::string& name) const {
    std::vector<std::string> places;
    const auto add = [&](const std::string& place) {
        if (std::ranges::find(places, place) == places.end()) {
            places.push_back(place);
        }
    };
    if (IsAbsolutePath(name)) {
        add(name);
    } else {
        add(import.folder + "/" + name);
    }
    add(import.folder + "/" + BareName(name));
    for (const std::string& folder : import.texturePaths) {
        if (!IsAbsolutePath(name)) {
            add(folder + "/" + name);
        }
        add(folder + "/" + BareName(name));
    }
    return places;
}

// Relative to the scene's folder where the picture lies below it.
std::string eAssimpPictures::NameFromScene(const std::string& place) const {
    const std::string folder = import.folder + "/";
    return place.starts_with(folder) ? place.substr(folder.size()) : place;
}

// The library keeps a picture as its file was, or as pixels, which no format that it reads has inside.
eBitmapMap eAssimpPictures::Embedded(const aiTexture& texture, const std::string& name) {
    if (texture.mHeight != 0 || texture.mWidth == 0) {
        import.report.CannotShow(ePhrase::LostPixels);
        return {.file = import.report.Ansi(BareName(name))};
    }
    std::string own = texture.mFilename.length != 0 ? texture.mFilename.C_Str() : name;
    std::ranges::replace(own, '\\', '/');
    own = BareName(own);
    if (own.starts_with('*')) {
        own = "image_" + own.substr(1);
    }
    return files.Embedded(
        {import.report.Ansi(own), std::string(".") + texture.achFormatHint, name, import.path},
        BytesOf(texture));
}

}  // namespace standalone
