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

std::uint8_t ColorByte(float channel) {
    return static_cast<std::uint8_t>(std::clamp(channel, 0.0F, 1.0F) * 255.0F + 0.5F);
}

Point2 Rounded(const DPoint2& p) {
    return {static_cast<float>(p.x), static_cast<float>(p.y)};
}

// Calls `shade` for each row with the sample points of its pixels, both coordinates between 0 and 1, and as
// many colours to fill.
template <class Shade>
eTextureImage RenderRows(int width, int height, Shade shade) {
    eTextureImage image(width, height);
    std::vector<DPoint2> points(static_cast<std::size_t>(width));
    std::vector<AColor> colors(points.size());
    std::uint8_t* pixel = image.pixels.data();
    for (int y = 1; y <= height; ++y) {
        const double v = y / (height + 1.0);
        for (int x = 1; x <= width; ++x) {
            points[static_cast<std::size_t>(x) - 1] = {x / (width + 1.0), v};
        }
        shade(std::span<const DPoint2>(points), std::span<AColor>(colors));
        for (const AColor& color : colors) {
            *pixel++ = ColorByte(color.b);
            *pixel++ = ColorByte(color.g);
            *pixel++ = ColorByte(color.r);
            *pixel++ = ColorByte(color.a);
        }
    }
    return image;
}

template <class Sample>
eTextureImage RenderPixels(int width, int height, Sample sample) {
    return RenderRows(width, height, [&](std::span<const DPoint2> points, std::span<AColor> colors) {
        std::transform(points.begin(), points.end(), colors.begin(), sample);
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
    std::vector<DPoint2> places(static_cast<std::size_t>(width));
    return RenderRows(width, height, [&](std::span<const DPoint2> points, std::span<AColor> colors) {
        std::ranges::transform(points, places.begin(), [&](const DPoint2& p) { return p * toMap; });
        map.EvalRow(places, colors);
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
