#include "verify/baked_light.h"

#include "host/object.h"

namespace verify {

eBakedLight::eBakedLight(const eVerifiedScene& scene)
    : scene_(scene),
      ambient_(scene.host.GetAmbient(0) * (static_cast<float>(scene.options.ambientPercent) / 100)),
      context_(lights_) {}

void eBakedLight::Meet(const std::vector<host::INode*>& nodes) {
    if (scene_.options.exportLightsCameras == 0) {
        return;
    }
    const host::TimeValue time = scene_.StaticTime();
    for (host::INode* node : nodes) {
        auto* const light = dynamic_cast<host::LightObject*>(node->EvalWorldState(time).obj);
        if (light != nullptr && light->EvalLightState(time).on) {
            if (host::LightDesc* description = light->CreateLightDesc(*node)) {
                lights_.emplace_back(description);
            }
        }
    }
    for (const auto& light : lights_) {
        light->Update(time, {}, true, true);
    }
}

bool eBakedLight::PointAt(const host::INode& owner, host::TimeValue time) {
    counting_.clear();
    context_.time = time;
    const host::Matrix3 worldToMesh = Inverse(NoScale(owner.GetObjTMAfterWSM(time)));
    for (const auto& light : lights_) {
        if (light->GetExclList().Lights(owner)) {
            light->UpdateViewDepParams(worldToMesh);
            counting_.push_back(light.get());
        }
    }
    return !counting_.empty();
}

host::Color eBakedLight::At(const host::Point3& position, const host::Point3& normal) {
    if (counting_.empty()) {
        return {1, 1, 1};
    }
    context_.point = position;
    context_.normal = normal;
    host::Color light = ambient_;
    for (host::LightDesc* source : counting_) {
        host::Color color;
        host::Point3 direction;
        float dot = 0;
        float share = 0;
        if (source->Illuminate(context_, normal, color, direction, dot, share)) {
            light += color * share;
        }
    }
    return light;
}

}  // namespace verify
