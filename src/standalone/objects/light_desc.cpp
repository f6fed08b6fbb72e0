#include "standalone/objects/light_desc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace standalone {

namespace {

// 1 up to `start`, falling linearly to 0 at `end`; a step where the two leave no room for a slope.
float FallOff(float value, float start, float end) {
    if (value <= start) {
        return 1;
    }
    return value >= end ? 0 : (end - value) / (end - start);
}

}  // namespace

void eLightDesc::Update(host::TimeValue t, const host::RendContext&, bool, bool) {
    world = node.GetNodeTM(t);
    UpdateViewDepParams({});
}

void eLightDesc::UpdateViewDepParams(const host::Matrix3& worldToView) {
    const host::Matrix3 view = world * worldToView;
    place = view.GetTrans();
    backwards = Normalize(view.GetRow(2));
}

float eLightDesc::Reach(float distance) const {
    return data.attenuation ? FallOff(distance, data.attenuation->start, data.attenuation->end) : 1;
}

float eLightDesc::Cone(const host::Point3& directionToLight) const {
    const float cosine = std::clamp(DotProd(directionToLight, backwards), -1.0F, 1.0F);
    const float fullAngle = 2 * std::acos(cosine) * 180 / std::numbers::pi_v<float>;
    return FallOff(fullAngle, data.hotspot, data.falloff);
}

bool eLightDesc::Illuminate(host::ShadeContext& context, const host::Point3& normal, host::Color& color,
                            host::Point3& direction, float& dot, float& diffuseCoef) {
    if (!data.on) {
        return false;
    }
    color = data.color * data.multiplier;
    if (IsAmbientOnly()) {
        direction = normal;
        dot = diffuseCoef = 1;
        return true;
    }
    float strength = 1;
    direction = backwards;
    if (data.kind != eLightKind::Directional) {
        const host::Point3 toLight = place - context.P();
        const float distance = Length(toLight);
        direction = Normalize(toLight);
        strength = distance > 0 ? Reach(distance) : 0;
        strength *= data.kind == eLightKind::Spot && strength > 0 ? Cone(direction) : 1;
    }
    dot = diffuseCoef = DotProd(normal, direction);
    color = color * strength;
    return strength > 0 && dot > 0;
}

}  // namespace standalone
