#include "material/queries/shade_material.h"

#include "material/queries/dum_mtl.h"
#include "material/queries/shade_context.h"
#include "run/export.h"
#include "scene/current_model.h"

host::AColor ShadeMaterial(Export& run, host::Mtl* material, host::TimeValue t, const host::Point2& uv) {
    static DumMtl nothing({0.5F, 0.6F, 0.5F});
    SContext& context = *run.shadeContext;
    context.nLights = 0;
    context.time = t;
    context.normal = {0, 0, 1};
    context.uv = {uv.x, uv.y};
    context.duv = {0.01F, 0.01F};
    context.point = {0, 0, 0};
    context.ambientLight = {1, 1, 1};
    context.node = run.model->bones.empty() ? nullptr : run.model->bones.front().node;
    (material != nullptr ? *material : nothing).Shade(context);
    const host::Color& color = context.out.c;
    return {color.r, color.g, color.b, 1};
}
