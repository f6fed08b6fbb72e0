#include "standalone/objects/mtl.h"

#include "standalone/data/overloaded.h"
#include "standalone/objects/mapped_mtl.h"
#include "standalone/objects/wrapper_mtl.h"

namespace standalone {

namespace {

// The light of the context that falls on the point, as far as it is not mirrored.
host::Color DiffuseLight(host::ShadeContext& context) {
    host::Color sum = context.ambientLight;
    const host::INode* const node = context.Node();
    for (int i = 0; i < context.nLights; ++i) {
        host::LightDesc& light = *context.Light(i);
        if (node != nullptr && !light.GetExclList().Lights(*node)) {
            continue;
        }
        host::Color color;
        host::Point3 direction;
        float dot = 0, diffuseCoef = 0;
        if (light.Illuminate(context, context.Normal(), color, direction, dot, diffuseCoef) &&
            light.AffectsDiffuse()) {
            sum += color * diffuseCoef;
        }
    }
    return sum;
}

}  // namespace

void ShadeDiffuse(host::ShadeContext& context, const host::Color& diffuse, host::Texmap* map, float amount,
                  float opacity) {
    host::Color surface = diffuse;
    if (map != nullptr && context.doMaps) {
        const host::AColor texel = map->EvalColor(context);
        surface += (host::Color{texel.r, texel.g, texel.b} + diffuse * -1) * amount;
    }
    context.out.c = DiffuseLight(context) * surface;
    context.out.t = host::Color{1, 1, 1} * (1 - opacity);
}

namespace {

class eStandardMtl : public eMappedMtl<host::StdMtl, eStandardMaterial> {
public:
    using eMappedMtl::eMappedMtl;

    host::ClassId ClassID() const override { return host::kStandardClass; }

    host::Color GetAmbient(int, bool) const override { return record.ambient; }
    host::Color GetSpecular(int, bool) const override { return record.specular; }
    float GetShininess(int, bool) const override { return record.shininess; }
    float GetShinStr(int, bool) const override { return record.shininessStrength; }
    std::uint32_t Requirements(int) const override { return record.twoSided ? kTwoSided : 0; }

    int StdIDToChannel(int id) const override {
        constexpr int kGlossinessId = 3, kSpecularLevelId = 4;
        return id == kGlossinessId ? kSpecularLevelId : id == kSpecularLevelId ? kGlossinessId : id;
    }
    bool MapEnabled(int channel) const override { return Slot(channel).enabled; }
    float GetTexmapAmt(int channel, host::TimeValue) const override { return Slot(channel).amount; }
};

class eOtherMtl : public eMappedMtl<host::Mtl, eOtherMaterial> {
public:
    using eMappedMtl::eMappedMtl;

    host::ClassId ClassID() const override { return record.classId; }
};

}  // namespace

std::unique_ptr<host::Mtl> MakeMtl(eScene& scene, std::size_t place, const eMaterialData& data) {
    using ePtr = std::unique_ptr<host::Mtl>;
    return std::visit(eOverloaded{
                          [&](const eStandardMaterial& kind) -> ePtr {
                              return std::make_unique<eStandardMtl>(scene, place, data, kind);
                          },
                          [&](const eMultiMaterial& kind) -> ePtr {
                              return std::make_unique<eMultiMtl>(scene, place, data, kind);
                          },
                          [&](const eTwoLayerMaterial& kind) -> ePtr {
                              return std::make_unique<eTwoLayerMtl>(scene, place, data, kind);
                          },
                          [&](const eSorrelMaterial& kind) -> ePtr {
                              return std::make_unique<eSorrelMtl>(scene, place, data, kind);
                          },
                          [&](const eOtherMaterial& kind) -> ePtr {
                              return std::make_unique<eOtherMtl>(scene, place, data, kind);
                          },
                      },
                      data.kind);
}

}  // namespace standalone
