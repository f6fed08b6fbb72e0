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

// The sample points of a row's pixels, both coordinates between 0 and 1.
class eSamplePoints {
public:
    eSamplePoints(int width, int height) : points(static_cast<std::size_t>(width)), rows(height) {
        for (int x = 1; x <= width; ++x) {
            points[static_cast<std::size_t>(x) - 1].x = x / (width + 1.0);
        }
    }
    std::span<const DPoint2> OfRow(int y) {
        for (DPoint2& point : points) {
            point.y = (y + 1) / (rows + 1.0);
        }
        return points;
    }

private:
    std::vector<DPoint2> points;
    int rows;
};

// `sample` gives the colour at a point.
template <class Sample>
void PutSamples(std::span<const DPoint2> points, std::span<std::uint8_t> pixels, const Sample& sample) {
    std::uint8_t* pixel = pixels.data();
    for (const DPoint2& point : points) {
        host::PutPixel(sample(point), pixel);
        pixel += 4;
    }
}

template <class Sample>
eTextureRows SampledRows(int width, int height, Sample sample) {
    return {width, height,
            [points = eSamplePoints(width, height), sample](int y, std::span<std::uint8_t> pixels) mutable {
                PutSamples(points.OfRow(y), pixels, sample);
            }};
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

eTextureRows RowsOfMap(host::MapRow& map, const host::DMatrix3& toMap, int width, int height) {
    const bool isIdentity = toMap.rows == host::DMatrix3().rows;
    return {width, height,
            [=, &map, points = eSamplePoints(width, height), places = std::vector<DPoint2>()](
                int y, std::span<std::uint8_t> pixels) mutable {
                if (isIdentity && map.CopyRow(y, width, height, pixels)) {
                    return;
                }
                const std::span<const DPoint2> row = points.OfRow(y);
                places.resize(row.size());
                std::ranges::transform(row, places.begin(), [&](const DPoint2& p) { return p * toMap; });
                map.EvalRow(places, pixels);
            }};
}

// A row of a map by single questions.
void PutMapSamples(const eTextureSource& source, const host::DMatrix3& toMap, host::TimeValue t,
                   std::span<const DPoint2> points, std::span<std::uint8_t> pixels) {
    SContext& context = MapContext();
    context.time = t;
    context.ambientLight = {1, 1, 1};
    context.duv = {0.01F, 0.01F};
    context.filterMaps = false;
    PutSamples(points, pixels, [&](const DPoint2& p) {
        const Point2 place = Rounded(p);
        context.uv = p * toMap;
        context.boxPoint = {2 * place.x - 1, 2 * place.y - 1, -1};
        return EvalMap(source, context);
    });
    context.filterMaps = true;
}

eTextureRows MapRows(const eTextureSource& source, host::TimeValue t) {
    const host::DMatrix3 toMap = ExactInverse(source.map->GetUVTransform());
    auto* const rows = dynamic_cast<host::MapRow*>(source.map);
    if (rows != nullptr && !IsOneChannel(source.role)) {
        return RowsOfMap(*rows, toMap, source.width, source.height);
    }
    return {source.width, source.height,
            [=, points = eSamplePoints(source.width, source.height)](int y,
                                                                     std::span<std::uint8_t> pixels) mutable {
                PutMapSamples(source, toMap, t, points.OfRow(y), pixels);
            }};
}

}  // namespace

host::Texmap* SourceMap(const eExportTexture& texture) {
    host::Texmap* const map = texture.texmap;
    return texture.role.isNormal && map->NumSubTexmaps() > 0 ? map->GetSubTexmap(0) : map;
}

eTextureRows TextureRows(Export& run, const eTextureSource& source, host::TimeValue t) {
    if (source.map == nullptr && source.material != nullptr) {
        const host::Color color = source.material->GetDiffuse(0, false);
        return SampledRows(source.width, source.height, [color](const DPoint2&) {
            return AColor{color.r, color.g, color.b, 1};
        });
    }
    if (source.map != nullptr && source.map->ClassID() == host::kBitmapClass) {
        return MapRows(source, t);
    }
    return SampledRows(source.width, source.height, [&run, material = source.material, t](const DPoint2& p) {
        return ShadeMaterial(run, material, t, Rounded(p));
    });
}
