#include "material/textures/texture_source.h"

#include <algorithm>
#include <span>
#include <vector>

#include "host/map_row.h"
#include "material/queries/shade_context.h"
#include "material/queries/shade_material.h"
#include "run/export.h"

namespace {

using host::AColor;
using host::DPoint2;
using host::Point2;

Point2 Rounded(const DPoint2& p) {
    return {static_cast<float>(p.x), static_cast<float>(p.y)};
}

// Calls `shade` for each row with the sample points of its pixels, both coordinates between 0 and 1, and
// their bytes to fill.
template <class Shade>
eTextureImage RenderRows(int width, int height, Shade shade) {
    eTextureImage image(width, height);
    std::vector<DPoint2> points(static_cast<std::size_t>(width));
    for (int x = 1; x <= width; ++x) {
        points[static_cast<std::size_t>(x) - 1].x = x / (width + 1.0);
    }
    for (int y = 1; y <= height; ++y) {
        for (DPoint2& point : points) {
            point.y = y / (height + 1.0);
        }
        shade(std::span<const DPoint2>(points), std::span(image.Pixel(0, y - 1), 4 * points.size()));
    }
    return image;
}

template <class Sample>
eTextureImage RenderPixels(int width, int height, Sample sample) {
    return RenderRows(width, height, [&](std::span<const DPoint2> points, std::span<std::uint8_t> pixels) {
        std::uint8_t* pixel = pixels.data();
        for (const DPoint2& point : points) {
            host::PutPixel(sample(point), pixel);
            pixel += 4;
        }
    });
}

// The context in which maps are evaluated alone: no lights, one per process.
SContext& MapContext() {
    static const eSceneLights noLights;
    static SContext context(noLights);
    return context;
}

bool IsOneChannel(const eTextureRole& role) {
    return !role.isNormal && (role.isBump || role.isSpecular);
}

AColor EvalMap(const eTextureSource& source, SContext& context) {
    const eTextureRole& role = source.role;
    if (!IsOneChannel(role)) {
        return source.map->EvalColor(context);
    }
    const float mono = source.map->EvalMono(context);
    if (role.isBump) {
        return {(mono - 0.5F) * role.bumpAmount + 0.5F, 0, 0, 1};
    }
    const float level = mono * role.specularAmount;
    return {level, level, level, 1};
}

eTextureImage RenderMapRows(host::MapRow& map, const host::DMatrix3& toMap, int width, int height) {
    const bool isIdentity = toMap.rows == host::DMatrix3().rows;
    std::vector<DPoint2> places(static_cast<std::size_t>(isIdentity ? 0 : width));
    return RenderRows(width, height, [&](std::span<const DPoint2> points, std::span<std::uint8_t> pixels) {
        std::transform(points.begin(), points.begin() + std::ssize(places), places.begin(),
                       [&](const DPoint2& p) { return p * toMap; });
        map.EvalRow(isIdentity ? points : places, pixels);
    });
}

eTextureImage RenderMap(const eTextureSource& source, host::TimeValue t) {
    const host::DMatrix3 toMap = ExactInverse(source.map->GetUVTransform());
    auto* const rows = dynamic_cast<host::MapRow*>(source.map);
    if (rows != nullptr && !IsOneChannel(source.role)) {
        return RenderMapRows(*rows, toMap, source.width, source.height);
    }
    SContext& context = MapContext();
    context.time = t;
    context.ambientLight = {1, 1, 1};
    context.duv = {0.01F, 0.01F};
    context.filterMaps = false;
    eTextureImage image = RenderPixels(source.width, source.height, [&](const DPoint2& p) {
        const Point2 place = Rounded(p);
        context.uv = p * toMap;
        context.boxPoint = {2 * place.x - 1, 2 * place.y - 1, -1};
        return EvalMap(source, context);
    });
    context.filterMaps = true;
    return image;
}

}  // namespace

host::Texmap* SourceMap(const eExportTexture& texture) {
    host::Texmap* const map = texture.texmap;
    return texture.role.isNormal && map->NumSubTexmaps() > 0 ? map->GetSubTexmap(0) : map;
}

eTextureImage RenderTexture(Export& run, const eTextureSource& source, host::TimeValue t) {
    if (source.map == nullptr && source.material != nullptr) {
        const host::Color color = source.material->GetDiffuse(0, false);
        return RenderPixels(source.width, source.height, [&](const DPoint2&) {
            return AColor{color.r, color.g, color.b, 1};
        });
    }
    if (source.map != nullptr && source.map->ClassID() == host::kBitmapClass) {
        return RenderMap(source, t);
    }
    return RenderPixels(source.width, source.height,
                        [&](const DPoint2& p) { return ShadeMaterial(run, source.material, t, Rounded(p)); });
}
