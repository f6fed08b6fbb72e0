#include "standalone/objects/texmap.h"

#include <cmath>
#include <numbers>

#include "standalone/data/overloaded.h"
#include "standalone/objects/bitmap_texmap.h"
#include "standalone/objects/procedural_texmaps.h"
#include "standalone/objects/scene.h"

namespace standalone {

namespace {

host::Matrix3 TransformOf(const eMapCoordinates& coordinates) {
    const double angle = coordinates.angle * std::numbers::pi / 180;
    const auto cosine = static_cast<float>(std::cos(angle)), sine = static_cast<float>(std::sin(angle));
    const host::Point2 &tiling = coordinates.tiling, &offset = coordinates.offset;
    return {host::Point3{cosine, sine, 0} * tiling.x,
            host::Point3{-sine, cosine, 0} * tiling.y,
            {0, 0, 1},
            {offset.x, offset.y, 0}};
}

}  // namespace

eTexmap::eTexmap(eScene& ownScene, std::size_t place, const eMapData& data)
    : eElement(ownScene.hold, place),
      scene(ownScene),
      mapData(data),
      transform(TransformOf(data.coordinates)),
      channel(data.coordinates.source == kVertexColor ? host::Mesh::kVertexColorChannel
                                                      : data.coordinates.channel) {}

host::Texmap* eTexmap::Map(int number) const {
    return scene.Map(number);
}

host::DPoint2 eTexmap::Coordinates(const host::ShadeContext& context) const {
    return context.ExactUV(channel) * transform;
}

float eTexmap::EvalMono(host::ShadeContext& context) {
    const host::AColor color = EvalColor(context);
    return (color.r + color.g + color.b) / 3;
}

void eTexmap::EnumAuxFiles(host::AssetEnumCallback& callback, std::uint32_t flags) const {
    for (int i = 0; i < NumSubTexmaps(); ++i) {
        if (const host::Texmap* map = GetSubTexmap(i)) {
            map->EnumAuxFiles(callback, flags);
        }
    }
}

std::unique_ptr<host::Texmap> MakeTexmap(eScene& scene, std::size_t place, const eMapData& data) {
    using ePtr = std::unique_ptr<host::Texmap>;
    return std::visit(
        eOverloaded{
            [&](const eBitmapMap& map) -> ePtr {
                return std::make_unique<eBitmapTexmap>(scene, place, data, map);
            },
            [&](const eNormalBumpMap& map) -> ePtr {
                return std::make_unique<eNormalBumpTexmap>(scene, place, data, map);
            },
            [&](const eMixMap& map) -> ePtr { return std::make_unique<eMixTexmap>(scene, place, data, map); },
            [&](const eRgbMultiplyMap& map) -> ePtr {
                return std::make_unique<eRgbMultiplyTexmap>(scene, place, data, map);
            },
            [&](const eVertexColorMap&) -> ePtr {
                return std::make_unique<ePlainTexmap>(scene, place, data, host::kVertexColorMapClass,
                                                      host::Color{1, 1, 1});
            },
            [&](const eCheckerMap& map) -> ePtr {
                return std::make_unique<eCheckerTexmap>(scene, place, data, map);
            },
            [&](const eOtherMap& map) -> ePtr {
                return std::make_unique<ePlainTexmap>(scene, place, data, map.classId, map.color);
            },
        },
        data.kind);
}

}  // namespace standalone
