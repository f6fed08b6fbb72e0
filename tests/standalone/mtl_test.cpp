#include "standalone/objects/mtl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "material/queries/shade_context.h"
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

// Would catch a wrapper that answers for itself, and an empty one that crashes or is black.
TEST_F(Mtl, ASorrelMaterialAnswersAsTheOneInside) {
    Add("sorrel", eSorrelMaterial{.material = Add("inside", eStandardMaterial{.diffuse = {1, 0, 0},
                                                                              .opacity = 0.5F,
                                                                              .twoSided = true})});
    Add("hollow", eSorrelMaterial{});
    Build();
    EXPECT_EQ(Get("sorrel").GetXParency(0, false), 0.5F);
    EXPECT_EQ(Get("sorrel").Requirements(-1), host::Mtl::kTwoSided);
    context.ambientLight = {1, 1, 1};
    ExpectColor(Shade("sorrel"), 1, 0, 0);
    EXPECT_EQ(Get("hollow").GetXParency(0, false), 0);
    ExpectColor(Shade("hollow"), 0.5F, 0.5F, 0.5F);
    // A number is not given for another type.
    float real = 0;
    int whole = 0;
    EXPECT_FALSE(Get("sorrel").GetParamBlock(0)->GetValue(1, 0, real));
    EXPECT_FALSE(Get("sorrel").GetParamBlock(0)->GetValue(4, 0, whole));
}

// Would catch a two-layer material that lacks its first layer, and requirements of one part only.
TEST_F(Mtl, LayersAndListsAnswerForTheirParts) {
    const int red = Add("red", eStandardMaterial{.diffuse = {1, 0, 0}});
    const int blue = Add("blue", eStandardMaterial{.diffuse = {0, 0, 1}, .twoSided = true});
    Add("both", eTwoLayerMaterial{.materials = {red, blue}});
    Add("second", eTwoLayerMaterial{.materials = {-1, blue}});
    Add("multi", eMultiMaterial{.materials = {red, -1, blue}});
    Add("empty", eMultiMaterial{});
    Build();
    EXPECT_EQ(Get("both").Requirements(-1), host::Mtl::kTwoSided);
    EXPECT_EQ(Get("both").GetDiffuse(0, false), (host::Color{1, 0, 0}));
    EXPECT_EQ(Get("second").GetDiffuse(0, false), (host::Color{0, 0, 1}));
    EXPECT_EQ(Get("multi").Requirements(-1), host::Mtl::kTwoSided);
    EXPECT_EQ(Get("multi").Requirements(0), 0U);
    EXPECT_EQ(Get("multi").GetDiffuse(5, false), (host::Color{0, 0, 1}));
    EXPECT_EQ(Get("empty").Requirements(3), 0U);
}

}  // namespace
