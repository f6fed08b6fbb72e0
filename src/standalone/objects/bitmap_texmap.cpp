#include "standalone/objects/bitmap_texmap.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/ansi.h"
#include "base/format.h"
#include "io/name.h"
#include "standalone/data/scene_path.h"
#include "standalone/objects/scene.h"

namespace standalone {

namespace {

constexpr host::AColor kNoPicture = {0, 0, 0, 1};

eImageFile FileOf(const eSceneData& scene, const eBitmapMap& bitmap) {
    if (!bitmap.onDisk.empty()) {
        return {bitmap.onDisk, platform::ePathForm::Native};
    }
    const std::string folder = scene.folder.empty() ? FolderOf(scene.file) : scene.folder;
    const bool isWhole = bitmap.file.empty() || IsAbsolutePath(bitmap.file) || folder.empty();
    return {ResolveDots(isWhole ? bitmap.file : folder + "/" + bitmap.file)};
}

class ePictureAsset : public host::AssetUser {
public:
    ePictureAsset(const eImageFile& pictureFile, const std::vector<std::string>& triedByLoader)
        : file(pictureFile), tried(triedByLoader) {}

    std::string GetFullFilePath() const override {
        return file.form == platform::ePathForm::Native ? FromUtf8(file.path).text : file.path;
    }
    std::vector<std::string> TriedPaths() const override {
        std::vector<std::string> paths;
        for (const std::string& path : tried) {
            paths.push_back(FromUtf8(path).text);
        }
        return paths.empty() ? std::vector{FromUtf8(platform::DiskPath(file.path, file.form)).text} : paths;
    }

private:
    const eImageFile& file;
    const std::vector<std::string>& tried;  // UTF-8
};

}  // namespace

eBitmapTexmap::eBitmapTexmap(eScene& ownScene, std::size_t place, const eMapData& data,
                             const eBitmapMap& bitmapMap)
    : eTexmap(ownScene, place, data),
      bitmap(bitmapMap),
      file(FileOf(ownScene.data, bitmapMap)),
      isCropped(bitmap.cropOrigin != host::Point2{} || bitmap.cropSize != host::Point2{1, 1}),
      isToned(bitmap.invert || bitmap.amount != 1) {}

const eImage* eBitmapTexmap::Picture() {
    if (generation != scene.images.Generation()) {
        picture = file.path.empty() ? nullptr : scene.images.Find(file);
        generation = scene.images.Generation();
    }
    return picture;
}

host::AColor eBitmapTexmap::EvalColor(host::ShadeContext& context) {
    const eImage* const image = Picture();
    if (image == nullptr) {
        return kNoPicture;
    }
    const auto [u, v] = Cropped(Coordinates(context));
    return Toned(context.filterMaps ? image->Bilinear(static_cast<float>(u), static_cast<float>(v))
                                    : image->Nearest(u, v));
}

void eBitmapTexmap::EvalRow(std::span<const host::DPoint2> places, std::span<std::uint8_t> pixels) {
    const eImage* const image = Picture();
    if (image != nullptr && !isToned) {
        image->NearestRow(OnPicture(places), pixels);
        return;
    }
    std::uint8_t* pixel = pixels.data();
    for (const host::DPoint2& place : OnPicture(places)) {
        host::PutPixel(image == nullptr ? kNoPicture : Toned(image->Nearest(place.x, place.y)), pixel);
        pixel += 4;
    }
}

bool eBitmapTexmap::CopyRow(int rowNumber, int width, int height, std::span<std::uint8_t> pixels) {
    const eImage* const image = Picture();
    if (image == nullptr || image->Width() != width || image->Height() != height || isToned || isCropped ||
        GetUVTransform() != host::Matrix3()) {
        return false;
    }
    image->CopyRow(rowNumber, pixels);
    return true;
}

// The places themselves where the map shows the picture as it is.
std::span<const host::DPoint2> eBitmapTexmap::OnPicture(std::span<const host::DPoint2> places) {
    const host::Matrix3 onMap = GetUVTransform();
    if (onMap == host::Matrix3() && !isCropped) {
        return places;
    }
    row.resize(places.size());
    std::ranges::transform(places, row.begin(), [&](const host::DPoint2& place) { return place * onMap; });
    if (isCropped) {
        std::ranges::transform(row, row.begin(), [&](const host::DPoint2& place) { return Cropped(place); });
    }
    return row;
}

host::DPoint2 eBitmapTexmap::Cropped(const host::DPoint2& place) const {
    if (!isCropped) {
        return place;
    }
    const auto [u, v] = place;
    return {bitmap.cropOrigin.x + (u - std::floor(u)) * bitmap.cropSize.x,
            bitmap.cropOrigin.y + (v - std::floor(v)) * bitmap.cropSize.y};
}

host::AColor eBitmapTexmap::Toned(const host::AColor& color) const {
    const host::AColor seen =
        bitmap.invert ? host::AColor{1 - color.r, 1 - color.g, 1 - color.b, color.a} : color;
    return {seen.r * bitmap.amount, seen.g * bitmap.amount, seen.b * bitmap.amount, seen.a};
}

std::string eBitmapTexmap::PictureSettings() const {
    std::string settings;
    if (isCropped) {
        const host::Point2 &origin = bitmap.cropOrigin, &size = bitmap.cropSize;
        settings += (format("crop %1% %2% %3% %4%; ") % origin.x % origin.y % size.x % size.y).Text();
    }
    if (bitmap.amount != 1 || bitmap.invert) {
        settings += (format("amount %1%%2%") % bitmap.amount % (bitmap.invert ? ", invert" : "")).Text();
    }
    return settings;
}

void eBitmapTexmap::EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const {
    if (file.path.empty()) {
        return;
    }
    if ((flags & kListMissingFiles) != 0 || IsFile(file)) {
        callback.RecordAsset(ePictureAsset(file, bitmap.tried));
    }
}

}  // namespace standalone
