#include "standalone/mtl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "material/shade_context.h"
#include "standalone/standalone_host.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;

// A scene with one node for each material, named like it.
class Mtl : public ::testing::Test {
protected:
    int Add(const std::string& name, eMaterialKind kind) {
        const int number = builder.Material(name, std::move(kind));
        builder.Node(name).Material(number);
        return number;
    }
    void Build() { host = std::make_unique<StandaloneHost>(builder.Build()); }
    host::Mtl& Get(const char* name) { return *host->GetINodeByName(name)->GetMtl(); }
    host::Color Shade(const char* name) {
        Get(name).Shade(context);
        return context.out.c;
    }

    support::eSceneBuilder builder;
    std::unique_ptr<StandaloneHost> host;
    eSceneLights lights;
    SContext context{lights};
};

void ExpectColor(const host::Color& color, float r, float g, float b) {
    EXPECT_NEAR(color.r, r, 1e-5F);
    EXPECT_NEAR(color.g, g, 1e-5F);
    EXPECT_NEAR(color.b, b, 1e-5F);
}

// Would catch slots in the wrong order, channels that are not exchanged, and opacity told for transparency.
TEST_F(Mtl, AStandardMaterialAnswersItsRecord) {
    eStandardMaterial record{
        .diffuse = {1, 0, 0}, .specular = {0, 1, 0}, .shininess = 0.3F, .opacity = 0.25F, .twoSided = true};
    record.maps[3] = {builder.Map(eOtherMap{}), 0.7F, true};
    record.maps[4] = {-1, 0.2F, false};
    Add("plain", eStandardMaterial{});
    Add("m", record);
    Build();
    auto& mtl = dynamic_cast<host::StdMtl&>(Get("m"));
    EXPECT_EQ(mtl.GetName(), "m");
    EXPECT_EQ(mtl.ClassID(), host::kStandardClass);
    EXPECT_EQ(mtl.GetXParency(0, false), 0.75F);
    EXPECT_EQ(mtl.Requirements(-1), host::Mtl::kTwoSided);
    EXPECT_EQ(mtl.GetSpecular(0, false), (host::Color{0, 1, 0}));
    EXPECT_EQ(mtl.GetShininess(0, false), 0.3F);
    ASSERT_EQ(mtl.NumSubTexmaps(), 12);
    EXPECT_NE(mtl.GetSubTexmap(host::kSpecularLevelMap), nullptr);
    EXPECT_EQ(mtl.StdIDToChannel(4), 3);
    EXPECT_EQ(mtl.StdIDToChannel(3), 4);
    EXPECT_EQ(mtl.StdIDToChannel(8), 8);
    EXPECT_TRUE(mtl.MapEnabled(3));
    EXPECT_FALSE(mtl.MapEnabled(4));
    EXPECT_EQ(mtl.GetTexmapAmt(3, 0), 0.7F);
    EXPECT_LT(Get("plain").IdentityOrder(), mtl.IdentityOrder());
}

// Would catch a map that replaces the colour whatever its amount, or shows although it is off, and light that
// does not colour the surface.
TEST_F(Mtl, ShadingMovesTheDiffuseColourTowardsTheMap) {
    eStandardMaterial record{.diffuse = {1, 0, 0}};
    record.maps[host::kDiffuseMap] = {builder.Map(eOtherMap{.color = {0, 0, 1}}), 0.25F, true};
    Add("mapped", record);
    record.maps[host::kDiffuseMap].enabled = false;
    Add("off", record);
    Add("other", eOtherMaterial{.classId = {7, 7}, .diffuse = {0, 1, 0}, .opacity = 0.5F});
    Build();
    context.ambientLight = {1, 1, 0.5F};
    ExpectColor(Shade("mapped"), 0.75F, 0, 0.125F);
    ExpectColor(Shade("off"), 1, 0, 0);
    ExpectColor(Shade("other"), 0, 1, 0);
    ExpectColor(context.out.t, 0.5F, 0.5F, 0.5F);
    context.doMaps = false;
    ExpectColor(Shade("mapped"), 1, 0, 0);
}

// Would catch a wrapper that answers for itself, an empty one that crashes or is black, and parameters under
// wrong numbers or types.
TEST_F(Mtl, ASorrelMaterialAnswersAsTheOneInside) {
    eStandardMaterial inside{.diffuse = {1, 0, 0}, .opacity = 0.5F, .twoSided = true};
    const int map = builder.Map(eOtherMap{});
    inside.maps[8].map = map;
    const int mask = builder.Map(eOtherMap{});
    Add("sorrel", eSorrelMaterial{.material = Add("inside", inside),
                                  .blend = 3,
                                  .modulate2x = 1,
                                  .environment = 2,
                                  .strength = 0.5F,
                                  .mask = mask});
    Add("hollow", eSorrelMaterial{});
    Build();
    host::Mtl& sorrel = Get("sorrel");
    EXPECT_EQ(sorrel.GetSubMtl(0), &Get("inside"));
    EXPECT_EQ(sorrel.GetSubTexmap(8), Get("inside").GetSubTexmap(8));
    EXPECT_EQ(sorrel.GetXParency(0, false), 0.5F);
    EXPECT_EQ(sorrel.Requirements(-1), host::Mtl::kTwoSided);
    context.ambientLight = {1, 1, 1};
    ExpectColor(Shade("sorrel"), 1, 0, 0);

    const host::IParamBlock& block = *sorrel.GetParamBlock(0);
    int whole = 0;
    float real = 0;
    host::Texmap* texmap = nullptr;
    EXPECT_TRUE(block.GetValue(1, 0, whole));
    EXPECT_EQ(whole, 3);
    EXPECT_TRUE(block.GetValue(3, 0, whole));
    EXPECT_EQ(whole, 2);
    EXPECT_FALSE(block.GetValue(4, 0, whole));
    EXPECT_TRUE(block.GetValue(4, 0, real));
    EXPECT_EQ(real, 0.5F);
    EXPECT_TRUE(block.GetValue(5, 0, texmap));
    EXPECT_NE(texmap, nullptr);
    EXPECT_TRUE(block.GetValue(6, 0, texmap));
    EXPECT_EQ(texmap, nullptr);
    EXPECT_EQ(sorrel.GetParamBlock(1), nullptr);

    EXPECT_EQ(Get("hollow").NumSubTexmaps(), 0);
    EXPECT_EQ(Get("hollow").GetXParency(0, false), 0);
    ExpectColor(Shade("hollow"), 0.5F, 0.5F, 0.5F);
}

// Would catch a two-layer material with sub-maps of its own, one that lacks its first layer, and requirements
// of one part only.
TEST_F(Mtl, LayersAndListsAnswerForTheirParts) {
    const int red = Add("red", eStandardMaterial{.diffuse = {1, 0, 0}});
    const int blue = Add("blue", eStandardMaterial{.diffuse = {0, 0, 1}, .twoSided = true});
    Add("both", eTwoLayerMaterial{.materials = {red, blue}});
    Add("second", eTwoLayerMaterial{.materials = {-1, blue}});
    Add("multi", eMultiMaterial{.materials = {red, -1, blue}});
    Add("empty", eMultiMaterial{});
    Build();
    EXPECT_EQ(Get("both").NumSubTexmaps(), 0);
    EXPECT_EQ(Get("both").Requirements(-1), host::Mtl::kTwoSided);
    EXPECT_EQ(Get("both").GetDiffuse(0, false), (host::Color{1, 0, 0}));
    EXPECT_EQ(Get("second").GetSubMtl(0), nullptr);
    EXPECT_EQ(Get("second").GetDiffuse(0, false), (host::Color{0, 0, 1}));
    EXPECT_TRUE(Get("multi").IsMultiMtl());
    EXPECT_EQ(Get("multi").GetSubMtl(1), nullptr);
    EXPECT_EQ(Get("multi").Requirements(-1), host::Mtl::kTwoSided);
    EXPECT_EQ(Get("multi").Requirements(0), 0U);
    EXPECT_EQ(Get("multi").GetDiffuse(5, false), (host::Color{0, 0, 1}));
    EXPECT_EQ(Get("empty").NumSubMtls(), 0);
    EXPECT_EQ(Get("empty").Requirements(3), 0U);
}

}  // namespace
