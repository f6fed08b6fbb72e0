#include "material/queries/material_queries.h"

#include <gtest/gtest.h>

#include "base/ansi.h"
#include "material/queries/mapping_channels.h"
#include "material/queries/shade_context.h"
#include "material/queries/shade_material.h"
#include "run/export.h"
#include "standalone/standalone_host.h"
#include "support/scene_builder.h"

namespace {

using namespace standalone;

// Catches names that the text formats can't hold.
TEST(MaterialQueries, NamesAreSafeAndInLowerCase) {
    support::eSceneBuilder scene;
    scene.Node("n").Material(scene.Material("Old \"brass\" \xC0_Vol", eStandardMaterial{}));
    StandaloneHost host(scene.Build());
    EXPECT_EQ(GetMaterialName(nullptr), "empty_material");
    EXPECT_EQ(GetMaterialName(host.GetINodeByName("n")->GetMtl()), "old_'brass'___vol");
    EXPECT_EQ(GetSpecularColor(nullptr), 0U);
    EXPECT_EQ(GetBumpAmount(nullptr), 0);
}

// Catches walks over a broken scene that never end.
TEST(MaterialQueries, ElementsThatContainThemselvesEndTheWalk) {
    support::eSceneBuilder scene;
    eStandardMaterial mapped;
    mapped.maps[host::kDiffuseMap].map = scene.Map(eMixMap{.maps = {0, 0, -1}}, {.source = 3}, "maze");
    scene.Node("multi").Material(scene.Material("multi", eMultiMaterial{.materials = {0}}));
    scene.Node("mapped").Material(scene.Material("mapped", mapped));
    StandaloneHost host(scene.Build());
    EXPECT_EQ(LeafMaterial(host.GetINodeByName("multi")->GetMtl(), 5), nullptr);

    Export run;
    run.host = &host;
    const auto found = CheckMappingChannels(run, host.GetINodeByName("mapped")->GetMtl(), {});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0]->GetName(), "maze");
    EXPECT_TRUE(CheckMappingChannels(run, nullptr, {}).empty());
}

// Catches lights of the scene in the evaluation of a whole material, and the grey of a face without one.
TEST(ShadeMaterial, AnswersWithoutLights) {
    StandaloneHost host{eSceneData{}};
    Export run;
    run.host = &host;
    run.shadeContext->nLights = 5;
    const host::AColor nothing = ShadeMaterial(run, nullptr, 0, {0, 0});
    EXPECT_FLOAT_EQ(nothing.r, 0.15F);
    EXPECT_FLOAT_EQ(nothing.g, 0.18F);
    EXPECT_FLOAT_EQ(nothing.a, 1);
    EXPECT_EQ(run.shadeContext->nLights, 0);
}

}  // namespace
