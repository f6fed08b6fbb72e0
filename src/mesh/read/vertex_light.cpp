#include "mesh/read/vertex_light.h"

#include "run/export.h"
#include "scene/scene_as_read.h"

bool PrepareLights(Export& run, const host::INode& root, const host::Matrix3& worldToMesh) {
    bool anyCounts = false;
    for (const auto& light : run.scene->sceneLights) {
        if (light->GetExclList().Lights(root)) {
            light->UpdateViewDepParams(worldToMesh);
            anyCounts = true;
        }
    }
    return anyCounts;
}

eVertexLight::eVertexLight(Export& run, const host::INode& root, host::TimeValue time)
    : ambient(run.scene->scaledAmbient), context(run.scene->sceneLights) {
    context.time = time;
    for (const auto& light : run.scene->sceneLights) {
        if (light->GetExclList().Lights(root)) {
            lights.push_back(light.get());
        }
    }
}

host::Color eVertexLight::At(const host::Point3& position, const host::Point3& normal) {
    if (lights.empty()) {
        return {1, 1, 1};
    }
    context.point = position;
    context.normal = normal;
    host::Color sum;
    for (host::LightDesc* light : lights) {
        host::Color color;
        host::Point3 direction;
        float dot = 0;
        float diffuseCoef = 0;
        if (light->Illuminate(context, normal, color, direction, dot, diffuseCoef)) {
            sum += color * diffuseCoef;
        }
    }
    return sum + ambient;
}
