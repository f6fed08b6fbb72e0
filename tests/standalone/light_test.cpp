#include <gtest/gtest.h>

#include <memory>

#include "material/queries/shade_context.h"
#include "standalone/standalone_host.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;

struct eLit {
    bool reached = false;
    host::Color color;
    host::Point3 direction;
    float coefficient = 0;
};

// A light two units above the origin that shines down, and the point that it is asked for.
class Light : public ::testing::Test {
protected:
    void Make(const eLightObject& record) {
        support::eSceneBuilder builder;
        builder.Node("other");
        builder.Node("light").Position(0, 0, 2).Object(record);
        host = std::make_unique<StandaloneHost>(builder.Build());
        host::INode& node = *host->GetINodeByName("light");
        auto& object = static_cast<host::LightObject&>(*node.EvalWorldState(0).obj);
        state = object.EvalLightState(0);
        light.reset(object.CreateLightDesc(node));
        light->Update(0, {}, true, true);
    }
    eLit At(const host::Point3& point, const host::Point3& normal = {0, 0, 1}) {
        context.point = point;
        eLit lit;
        float dot = 0;
        lit.reached = light->Illuminate(context, normal, lit.color, lit.direction, dot, lit.coefficient);
        return lit;
    }

    std::unique_ptr<StandaloneHost> host;
    std::unique_ptr<host::LightDesc> light;
    host::LightState state;
    eSceneLights noLights;
    SContext context{noLights};
};

// Would catch light from behind, light without its multiplier, and attenuation that starts or ends elsewhere.
TEST_F(Light, AnOmniLightFadesWithDistanceAndAngle) {
    Make({.color = {1, 0.5F, 0}, .multiplier = 2, .attenuation = eAttenuation{1, 3}});
    eLit lit = At({0, 0, 0});
    EXPECT_TRUE(lit.reached);
    EXPECT_EQ(lit.color, (host::Color{1, 0.5F, 0})) << "halfway from start to end";
    EXPECT_EQ(lit.direction, (host::Point3{0, 0, 1}));
    EXPECT_EQ(lit.coefficient, 1);
    EXPECT_EQ(At({0, 0, 1.5F}).color.r, 2);
    EXPECT_NEAR(At({0, 0, 0}, {0, 0.6F, 0.8F}).coefficient, 0.8F, 1e-6F);
    EXPECT_FALSE(At({0, 0, 0}, {0, 0, -1}).reached) << "from behind";
    EXPECT_FALSE(At({0, 0, -1}).reached) << "out of reach";
    EXPECT_FALSE(At({0, 0, 2}).reached) << "at the light itself";
    EXPECT_TRUE(state.useAtten);
    EXPECT_EQ(state.attenEnd, 3);
    EXPECT_EQ(state.color, (host::Color{1, 0.5F, 0})) << "without the multiplier";
}

// Would catch half angles taken for full ones, and a cone on the wrong side of the light.
TEST_F(Light, ASpotHasACone) {
    Make({.kind = eLightKind::Spot, .hotspot = 60, .falloff = 120});
    EXPECT_EQ(At({0, 0, 0}).color.r, 1);
    EXPECT_EQ(At({1, 0, 0}).color.r, 1) << "26.6 degrees off the axis lie inside";
    EXPECT_NEAR(At({2, 0, 0}).color.r, 0.5F, 1e-5F) << "45 degrees lie halfway";
    EXPECT_FALSE(At({4, 0, 0}).reached);
    EXPECT_FALSE(At({0, 0, 4}, {0, 0, -1}).reached) << "behind the spot";
    EXPECT_EQ(state.type, 1);
    EXPECT_EQ(state.hotsize, 60);
}

// Would catch a directional light with a place or a cone, and ambient light that depends on the surface.
TEST_F(Light, DirectionalAndAmbientLightsHaveNoPlace) {
    Make({.kind = eLightKind::Directional, .attenuation = eAttenuation{0, 1}});
    EXPECT_TRUE(At({100, 0, 50}).reached);
    EXPECT_EQ(At({100, 0, 50}).direction, (host::Point3{0, 0, 1}));
    EXPECT_FALSE(At({0, 0, 0}, {1, 0, 0}).reached);
    Make({.ambientOnly = true});
    EXPECT_TRUE(light->IsAmbientOnly());
    const eLit lit = At({0, 0, 2}, {0, 0, -1});
    EXPECT_TRUE(lit.reached);
    EXPECT_EQ(lit.coefficient, 1);
    EXPECT_EQ(lit.direction, (host::Point3{0, 0, -1}));
    Make({.on = false});
    EXPECT_FALSE(At({0, 0, 0}).reached);
}

// Would catch distances and directions left in world space.
TEST_F(Light, TheViewUpdateMovesTheLight) {
    Make({.attenuation = eAttenuation{3, 5}});
    light->UpdateViewDepParams(host::Matrix3({2, 0, 0}, {0, 0, 2}, {0, -2, 0}, {0, 0, 0}));
    EXPECT_TRUE(At({0, 0, 0}, {0, -1, 0}).direction.Equals({0, -1, 0}, 1e-6F));
    EXPECT_NEAR(At({0, 0, 0}, {0, -1, 0}).color.r, 0.5F, 1e-6F) << "4 units of the view away";
}

// Would catch lists that hold the wrong nodes or the wrong sense.
TEST(LightLists, IncludeAndExcludeNodes) {
    support::eSceneBuilder builder;
    support::eNode a = builder.Node("a");
    builder.Node("lamp").Object(eLightObject{.include = true, .listedNodes = {a.Number()}});
    StandaloneHost host(builder.Build());
    host::INode& node = *host.GetINodeByName("lamp");
    auto& object = static_cast<host::LightObject&>(*node.EvalWorldState(0).obj);
    const std::unique_ptr<host::LightDesc> light(object.CreateLightDesc(node));
    EXPECT_TRUE(light->GetExclList().Lights(*host.GetINodeByName("a")));
    EXPECT_FALSE(light->GetExclList().Lights(node));
    EXPECT_EQ(&light->Node(), &node);
}

}  // namespace
