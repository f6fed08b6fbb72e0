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
