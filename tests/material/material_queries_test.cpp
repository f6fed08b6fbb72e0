#include "material/material_queries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/ansi.h"
#include "export/export.h"
#include "material/dum_mtl.h"
#include "material/mapping_channels.h"
#include "material/shade_material.h"
#include "standalone/standalone_host.h"
#include "support/message_collector.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;
using testing::ElementsAre;

// The materials of a scene, asked as the export asks them.
class eMaterials {
public:
    explicit eMaterials(const support::eSceneBuilder& builder) : scene(builder.Build()) {}
    host::Mtl* operator[](int number) { return scene.Material(number); }

private:
    eScene scene;
};

eStandardMaterial WithMaps(support::eSceneBuilder& scene, float bump, float specular) {
    eStandardMaterial material;
    material.maps[host::kDiffuseMap].map = scene.Map(eCheckerMap{});
    material.maps[host::kBumpMap] = {.map = scene.Map(eCheckerMap{}), .amount = bump};
    material.maps[host::kSpecularLevelMap] = {.map = scene.Map(eCheckerMap{}), .amount = specular};
    return material;
}

// Catches amounts of disabled or missing maps, of the wrong channel, and answers of a wrapper for itself.
TEST(MaterialQueries, AmountsAreThoseOfEnabledMapsOfAStandardMaterial) {
    support::eSceneBuilder scene;
    const int both = scene.Material("both", WithMaps(scene, 0.5F, 0.25F));
    eStandardMaterial disabled = WithMaps(scene, 0.5F, 0);
    disabled.maps[host::kBumpMap].enabled = false;
    const int off = scene.Material("off", disabled);
    const int wrapped = scene.Material("wrapped", eSorrelMaterial{.material = both});
    const int other = scene.Material("other", eOtherMaterial{.classId = {77, 0}, .maps = disabled.maps});
    const int hollow = scene.Material("hollow", eSorrelMaterial{});
    eMaterials materials(scene);
    EXPECT_EQ(GetBumpAmount(materials[both]), 0.5F);
    EXPECT_EQ(GetSpecularAmount(materials[both]), 0.25F);
    EXPECT_EQ(GetSlotCount(materials[both]), 3);
    EXPECT_EQ(GetBumpAmount(materials[off]), 0);
    EXPECT_EQ(GetSlotCount(materials[off]), 1);
    EXPECT_EQ(GetBumpAmount(materials[wrapped]), 0.5F);
    EXPECT_EQ(GetBumpAmount(materials[other]), 0);
    EXPECT_EQ(GetSlotCount(materials[hollow]), 1);
    EXPECT_EQ(GetBumpAmount(nullptr), 0);
}

// Catches a kind of two layers that is overlooked.
TEST(MaterialQueries, TwoLayersComeFromTheMaterialOrItsDiffuseMap) {
    support::eSceneBuilder scene;
    const auto withDiffuse = [&](int map) {
        eStandardMaterial material;
        material.maps[host::kDiffuseMap].map = map;
        return scene.Material("m", material);
    };
    const int plain = withDiffuse(scene.Map(eCheckerMap{}));
    const int mix = withDiffuse(scene.Map(eMixMap{}));
    const int product = withDiffuse(scene.Map(eRgbMultiplyMap{}));
    const int layers = scene.Material("layers", eTwoLayerMaterial{{plain, plain}});
    eMaterials materials(scene);
    EXPECT_FALSE(IsTwoLayer(materials[plain]));
    EXPECT_TRUE(IsTwoLayer(materials[mix]));
    EXPECT_FALSE(IsMultiply(materials[mix]));
    EXPECT_TRUE(IsTwoLayer(materials[product]));
    EXPECT_TRUE(IsMultiply(materials[product]));
    EXPECT_TRUE(IsTwoLayer(materials[layers]));
    EXPECT_FALSE(IsMultiply(materials[layers]));
    EXPECT_EQ(GetSlotCount(materials[layers]), 2);
}

// Catches names that the text formats can't hold, and channels in another order or rounded the wrong way.
TEST(MaterialQueries, NamesAndSpecularColours) {
    support::eSceneBuilder scene;
    const int brass = scene.Material("Old \"brass\" \xC0_Vol",
                                     eStandardMaterial{.specular = {1, 0.5F, 2}, .shininess = 0.999F});
    const int other = scene.Material("other", eOtherMaterial{});
    eMaterials materials(scene);
    EXPECT_EQ(GetMaterialName(nullptr), "empty_material");
    EXPECT_EQ(LowerAscii(GetMaterialName(materials[brass])), "old_'brass'___vol");
    EXPECT_EQ(GetSpecularColor(materials[brass]), 0xFEFF80FFU);
    EXPECT_EQ(GetSpecularColor(materials[other]), 0U);
    EXPECT_EQ(GetSpecularColor(nullptr), 0U);
}

// A multi material whose only slot is itself.
class eEndlessMulti : public DumMtl {
public:
    eEndlessMulti() : DumMtl({0, 0, 0}) {}
    bool IsMultiMtl() const override { return true; }
    int NumSubMtls() const override { return 1; }
    host::Mtl* GetSubMtl(int) const override { return const_cast<eEndlessMulti*>(this); }
};

// A map from world coordinates whose two inputs are itself.
class eEndlessMap : public host::Texmap {
public:
    host::ClassId ClassID() const override { return {1, 1}; }
    const std::string& GetName() const override { return name; }
    void Update(host::TimeValue, host::Interval&) override {}
    int NumSubTexmaps() const override { return 2; }
    host::Texmap* GetSubTexmap(int) const override { return const_cast<eEndlessMap*>(this); }
    int GetUVWSource() const override { return kWorldXYZ; }
    host::AColor EvalColor(host::ShadeContext&) override { return {}; }
    float EvalMono(host::ShadeContext&) override { return 0; }

private:
    std::string name = "maze";
};

class eEndlesslyMapped : public DumMtl {
public:
    eEndlesslyMapped() : DumMtl({0, 0, 0}) {}
    int NumSubTexmaps() const override { return 1; }
    host::Texmap* GetSubTexmap(int) const override { return &map; }

private:
    mutable eEndlessMap map;
};

// Catches walks over a broken scene that never end.
TEST(MaterialQueries, ElementsThatContainThemselvesEndTheWalk) {
    eEndlessMulti multi;
    EXPECT_EQ(LeafMaterial(&multi, 5), nullptr);

    StandaloneHost host{eSceneData{}};
    Export run;
    run.host = &host;
    support::eMessageCollector messages;
    eEndlesslyMapped mapped;
    EXPECT_TRUE(CheckMappingChannels(run, &mapped, {}));
    EXPECT_THAT(
        messages.Lines(),
        ElementsAre("Предупреждение: Неподдерживаемый канал текстурирования в материале 'maze'. Будет "
                    "использоваться 'Object XYZ'."));
    EXPECT_FALSE(CheckMappingChannels(run, nullptr, {}));
}

// Catches lights of the scene in the evaluation of a whole material, and the grey of a face without one.
TEST(ShadeMaterial, AnswersWithoutLights) {
    StandaloneHost host{eSceneData{}};
    Export run;
    run.host = &host;
    run.shadeContext.nLights = 5;
    const host::AColor nothing = ShadeMaterial(run, nullptr, 0, {0, 0});
    EXPECT_FLOAT_EQ(nothing.r, 0.15F);
    EXPECT_FLOAT_EQ(nothing.g, 0.18F);
    EXPECT_FLOAT_EQ(nothing.a, 1);
    EXPECT_EQ(run.shadeContext.nLights, 0);
}

}  // namespace
