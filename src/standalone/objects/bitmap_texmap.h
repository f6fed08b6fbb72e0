#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/map_row.h"
#include "standalone/objects/texmap.h"
#include "standalone/pictures/image_store.h"

namespace standalone {

// A map that shows a picture file through its output curve. Without a picture that can be read it is black.
class eBitmapTexmap : public eTexmap, public host::MapRow {
public:
    eBitmapTexmap(eScene& scene, std::size_t place, const eMapData& data, const eBitmapMap& bitmap);

    host::ClassId ClassID() const override { return host::kBitmapClass; }

    // Filtered where the context says so. The picture is decoded when it is first asked for: most maps are
    // only asked where their file is.
    host::AColor EvalColor(host::ShadeContext& context) override;
    void EvalRow(std::span<const host::DPoint2> places, std::span<std::uint8_t> pixels) override;
    bool CopyRow(int row, int width, int height, std::span<std::uint8_t> pixels) override;
    std::string PictureSettings() const override;
    void EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const override;

private:
    const eImage* Picture();
    std::span<const host::DPoint2> OnPicture(std::span<const host::DPoint2> places);
    host::DPoint2 Cropped(const host::DPoint2& place) const;
    host::AColor Toned(const host::AColor& color) const;

    const eBitmapMap& bitmap;
    eImageFile file;  // empty path where the document names none
    bool isCropped;
    bool isToned;

    // Found in the store at `generation` of it; nothing before the first look.
    const eImage* picture = nullptr;
    std::optional<unsigned> generation;

    std::vector<host::DPoint2> row;  // scratch of OnPicture
};

}  // namespace standalone
