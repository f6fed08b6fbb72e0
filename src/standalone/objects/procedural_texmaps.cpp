#include "standalone/objects/procedural_texmaps.h"

#include <cmath>

namespace standalone {

namespace {

host::AColor Evaluate(host::Texmap* map, host::ShadeContext& context, const host::AColor& missing) {
    return map != nullptr ? map->EvalColor(context) : missing;
}

constexpr host::AColor kBlack{0, 0, 0, 1};
constexpr host::AColor kWhite{1, 1, 1, 1};

}  // namespace

host::AColor eNormalBumpTexmap::EvalColor(host::ShadeContext& context) {
    return Evaluate(GetSubTexmap(0), context, kBlack);
}

host::AColor eMixTexmap::EvalColor(host::ShadeContext& context) {
    const host::AColor first = Evaluate(GetSubTexmap(0), context, kBlack);
    const host::AColor second = Evaluate(GetSubTexmap(1), context, kBlack);
    host::Texmap* const mask = GetSubTexmap(2);
    const float f = mask != nullptr ? mask->EvalMono(context) : mix.amount;
    return {first.r + (second.r - first.r) * f, first.g + (second.g - first.g) * f,
            first.b + (second.b - first.b) * f, first.a + (second.a - first.a) * f};
}

host::AColor eRgbMultiplyTexmap::EvalColor(host::ShadeContext& context) {
    const host::AColor first = Evaluate(GetSubTexmap(0), context, kWhite);
    const host::AColor second = Evaluate(GetSubTexmap(1), context, kWhite);
    return {first.r * second.r, first.g * second.g, first.b * second.b, first.a * second.a};
}

host::AColor eCheckerTexmap::EvalColor(host::ShadeContext& context) {
    const host::DPoint2 point = Coordinates(context);
    const double cell = std::floor(2 * point.x) + std::floor(2 * point.y);
    const host::Color& color = checker.colors[std::fmod(cell, 2.0) == 0 ? 0 : 1];
    return {color.r, color.g, color.b, 1};
}

}  // namespace standalone
