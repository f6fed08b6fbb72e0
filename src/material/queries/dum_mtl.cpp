#include "material/queries/dum_mtl.h"

#include <cmath>

namespace {

constexpr float kAmbientShare = 0.3F;

struct eLightSums {
    host::Color diffuse;
    host::Color specular;
    host::Color ambient;
};

void AddLight(host::LightDesc& light, host::ShadeContext& context, float shininess, eLightSums& sums) {
    const host::INode* node = context.Node();
    if (node != nullptr && !light.GetExclList().Lights(*node)) {
        return;
    }
    host::Color color;
    host::Point3 direction;
    float dot = 0;
    float diffuseCoef = 0;
    if (!light.Illuminate(context, context.Normal(), color, direction, dot, diffuseCoef)) {
        return;
    }
    if (light.IsAmbientOnly()) {
        sums.ambient += color;
        return;
    }
    if (light.AffectsDiffuse()) {
        sums.diffuse += color * diffuseCoef;
    }
    const float highlight = host::DotProd(direction, context.ReflectVector());
    if (light.AffectsSpecular() && highlight > 0) {
        sums.specular += color * (std::pow(highlight, shininess) * dot);
    }
}

}  // namespace

DumMtl::DumMtl(const host::Color& color) : diffuse(color), shininess(std::exp2(0.2F * 10.0F)) {}

void DumMtl::Shade(host::ShadeContext& context) {
    eLightSums sums;
    for (int i = 0; i < context.nLights; ++i) {
        AddLight(*context.Light(i), context, shininess, sums);
    }
    context.out.t = {0, 0, 0};
    context.out.c = diffuse * (context.ambientLight * kAmbientShare + sums.diffuse) +
                    specular * sums.specular + sums.ambient;
}

DumMtl& PlaceholderMaterial() {
    static DumMtl placeholder({0.5F, 0.5F, 0.5F});
    return placeholder;
}
