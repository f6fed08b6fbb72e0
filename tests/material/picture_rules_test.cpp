// Pictures that are symmetric under nothing, and the times at which a material is asked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "material/queries/dum_mtl.h"
#include "material/queries/mapping_channels.h"
#include "material/queries/shade_context.h"
#include "material/queries/shade_material.h"
#include "material/run_materials.h"
#include "material/textures/bmp_file.h"
#include "material/textures/normal_map.h"
#include "material/textures/texture_source.h"
#include "material/write_materials.h"
#include "run/resource_sets.h"
#include "scene/scene_lights.h"
#include "support/export_run.h"
#include "support/pictures.h"
#include "support/scene_builder.h"
#include "texture/dds_reader.h"

namespace {

using namespace standalone;
using support::eSceneBuilder;
using testing::ElementsAre;
using testing::Pair;

std::span<const std::uint8_t> BytesOf(const std::string& file) {
    return {reinterpret_cast<const std::uint8_t*>(file.data()), file.size()};
}

// A scene with a wall of 40 by 10 metres whose texture shows a quarter of its height. Its longest edge, the
// third, goes up and along.
eSceneData WallOf(const eStandardMaterial& material, eSceneBuilder& scene) {
    host::Mesh wall = support::TriangleMesh({{40, 0, 0}, {0, 0, 0}, {0, 0, 10}}, {{0, 1, 2}});
    wall.maps.push_back({1, {{1, 0, 0}, {0, 0, 0}, {0, 0.25F, 0}}, {{{0, 1, 2}}}});
    scene.Node("m")
        .Property("Model=m")
        .Object(eHelperObject{})
        .Child("wall")
        .Property("Poly")
        .Object(eMeshObject{wall, {}})
        .Material(scene.Material("wall", material));
    return scene.Build();
}

// Catches texels that are read twice or not at all, filtered, turned over or tiled, and channels that change
// places.
TEST(PictureRules, ARebuiltPictureIsThePicture) {
    const support::ePicture ramp{
        5, 3, 4, [] {
            std::vector<std::uint8_t> values;
            for (std::uint8_t i = 0; i < 15; ++i) {
                values.insert(values.end(), {std::uint8_t(17 * i), std::uint8_t(7 * i),
                                             std::uint8_t(250 - 9 * i), std::uint8_t(40 + 11 * i)});
            }
            return values;
        }()};
    const support::eTempFolder art;
    art.Write("ramp.png", support::Png(ramp));
    eSceneBuilder scene;
    eStandardMaterial material;
    material.maps[host::kDiffuseMap].map =
        scene.Map(eBitmapMap{.file = art / "ramp.png"}, {.offset = {0.25F, 0.5F}, .tiling = {2, 3}});
    support::eExportRun run(WallOf(material, scene));
    run.Do();
    const std::string file = run.Read("m/ramp.bmp");
    EXPECT_EQ(file.substr(26, 4), std::string("\1\0\x20\0", 4)) << "one plane of 32 bits";
    std::string problem;
    const std::optional<eBmpPicture> picture = ReadBmp(BytesOf(file), problem);
    ASSERT_TRUE(picture) << problem;
    ASSERT_THAT(std::pair(picture->image.width, picture->image.height), Pair(5, 3));
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) {
            const std::uint8_t* texel = picture->image.Pixel(x, 2 - y);  // from the lowest row up
            const std::uint8_t* expected = ramp.values.data() + 4 * (5 * y + x);
            EXPECT_THAT(std::vector(texel, texel + 4),
                        ElementsAre(expected[2], expected[1], expected[0], expected[3]))
                << x << " " << y;
        }
    }
}

// Catches sizes that the mesh does not feed, or that change places. The longest way for both coordinates is
// the third edge, of 41.23 metres: 41.23 by one picture along and by a quarter up, and half of that as the
// first mean.
TEST(PictureRules, AGeneratedPictureIsAsLargeAsTheWall) {
    eSceneBuilder scene;
    eStandardMaterial material;
    material.maps[host::kDiffuseMap].map = scene.Map(eCheckerMap{});
    support::eExportRun run(WallOf(material, scene));
    run.Do();
    std::string problem;
    const std::string file = run.Read("m/tex0_0.bmp");
    const std::optional<eBmpPicture> picture = ReadBmp(BytesOf(file), problem);
    ASSERT_TRUE(picture) << problem;
    EXPECT_THAT(std::pair(picture->image.width, picture->image.height), Pair(20, 82));
}

// Catches a chain of one level, an amount that is not applied, and heights that are read otherwise than they
// lie. The ground rises by 16 of 255 a texel, by half of that after the amount: dx = 4 * 2 * 8 / 255 =
// 0.25098, and the normal is (-0.24343, 0, 0.96991).
TEST(PictureRules, HeightsAreScaledByTheAmountAndHaveEveryLevel) {
    support::ePicture slope{16, 4, 1, {}};
    for (int i = 0; i < 64; ++i) {
        slope.values.push_back(static_cast<std::uint8_t>(16 * (i % 16)));
    }
    const support::eTempFolder art;
    art.Write("slope.png", support::Png(slope));
    eSceneBuilder scene;
    eStandardMaterial material;
    material.maps[host::kDiffuseMap].map = scene.Map(eCheckerMap{});
    material.maps[host::kBumpMap] = {.map = scene.Map(eBitmapMap{.file = art / "slope.png"}), .amount = 0.5F};
    support::eExportRun run(WallOf(material, scene));
    run.Do();
    const std::string file = run.Read("m/slope.dds");
    const eDdsFile dds = ReadDds(BytesOf(file));
    ASSERT_TRUE(dds.problems.empty());
    EXPECT_EQ(dds.levels.size(), 5U) << "16 by 4, 8 by 2, 4 by 1, 2 by 1, 1 by 1";
    const ePixelImage normals = DecodeDdsLevel(BytesOf(file), dds, 0);
    const std::uint8_t* texel = normals.Pixel(5, 1);
    EXPECT_EQ(texel[3], 96) << "(1 - 0.24343) * 127.5";
    EXPECT_NEAR(texel[1], 127, 1);
    EXPECT_NEAR(texel[2], 251, 1);
}

// Catches every change of kernel, sign, length, side and rounding. The ground is even but for two texels, 1
// at (0, 0) and 0.2 at (1, 1), which meet themselves at all edges; dx and dy by the kernel 1 2 1, and normal
// (-dx, dy, 1):
//
//     dx, dy    y = 0:  0.2, -0.2    -2, -0.4    -0.2, -0.2    2, 0
//               y = 1:  0.4, 2       -1, 1       -0.4, 0       1, 1
//               y = 2:  0.2, -1.8    -1, -0.6    -0.2, 0.2     1, -1
TEST(PictureRules, NormalsOfTwoBumps) {
    eTextureImage heights(4, 3);
    heights.Pixel(0, 0)[2] = 255;
    heights.Pixel(1, 1)[2] = 51;
    const std::vector<std::vector<int>> alphaGreenBlue[] = {
        {{115, 16, 189},
         {210, 77, 210},
         {152, 152, 250},
         {53, 53, 201}},  // row 2: the picture is turned over
        {{105, 239, 183}, {201, 201, 201}, {174, 127, 245}, {53, 201, 201}},
        {{102, 102, 250}, {239, 105, 183}, {152, 102, 250}, {13, 127, 184}}};
    const eTextureImage normals = NormalsFromHeights(heights);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x) {
            const std::uint8_t* texel = normals.Pixel(x, y);
            const std::vector<int>& expected =
                alphaGreenBlue[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
            EXPECT_THAT(std::vector<int>(texel, texel + 4),
                        ElementsAre(expected[2], expected[1], 0, expected[0]))
                << x << " " << y;
        }
    }
}

// A bitmap map and a material that note when they are asked.
class eWatchedMap : public host::Texmap {
public:
    std::vector<int> loaded, asked;
    bool isFiltered = false;

    host::ClassId ClassID() const override { return host::kBitmapClass; }
    const std::string& GetName() const override { return name; }
    void Update(host::TimeValue, host::Interval&) override {}
    void LoadMapFiles(host::TimeValue t) override { loaded.push_back(t); }
    float EvalMono(host::ShadeContext&) override { return 0; }
    host::AColor EvalColor(host::ShadeContext& context) override {
        asked.push_back(context.CurTime());
        isFiltered = context.filterMaps;
        return {};
    }

private:
    std::string name = "watched";
};

class eWatchedMaterial : public DumMtl {
public:
    eWatchedMap map;
    std::vector<int> updated, shaded;

    eWatchedMaterial() : DumMtl({1, 1, 1}) {}
    void Update(host::TimeValue t, host::Interval&) override { updated.push_back(t); }
    int NumSubTexmaps() const override { return 2; }
    host::Texmap* GetSubTexmap(int i) const override {
        return i == host::kDiffuseMap ? const_cast<eWatchedMap*>(&map) : nullptr;
    }
    void Shade(host::ShadeContext& context) override {
        shaded.push_back(context.CurTime());
        context.out.c = context.ambientLight;
    }
};

// Catches materials and maps that are asked at frame 0, or before they know the time. The timeline begins at
// frame 5, the static frame is 7, a frame has 160 ticks.
TEST(PictureRules, MaterialsAreAskedAtTheTimesOfTheRun) {
    StandaloneHost host{eSceneData{}};
    const support::eTempFolder folder;
    support::eMessageCollector messages;
    eWatchedMaterial material;
    Export run;
    run.host = &host;
    run.frameStart = 5;
    run.options.staticFrame = 7;
    run.resources->commonFolder = eName(folder.Path());
    run.materials->materialMap[{&material, 0}] = {};
    WriteMaterials(run, false);
    EXPECT_THAT(material.updated, ElementsAre(5 * 160));
    EXPECT_THAT(material.map.loaded, ElementsAre(5 * 160));
    CheckMappingChannels(run, &material, {});
    EXPECT_THAT(material.map.loaded, ElementsAre(5 * 160, 7 * 160));
    EXPECT_EQ(ShadeMaterial(run, &material, 9 * 160, {}).g, 1);
    EXPECT_THAT(material.shaded, ElementsAre(9 * 160));
    std::array<std::uint8_t, 4> pixel{};
    TextureRows(run, {.material = &material, .map = &material.map, .role = {}, .width = 1, .height = 1},
                11 * 160)
        .fill(0, pixel);
    EXPECT_THAT(material.map.asked, ElementsAre(11 * 160));
    EXPECT_FALSE(material.map.isFiltered);
}

// A place that mirrors straight up.
class eMirroringContext : public SContext {
public:
    using SContext::SContext;
    host::Point3 ReflectVector() const override { return {0, 0, 1}; }
};

// Catches light without its angle, its exclusions or its kind. The lamp stands at cosine 0.8 of the normal,
// and of the way that the place mirrors; the exponent is 4:
//     colour * (0.3 + 0.5 * 0.8) + 0.2 * 0.5 * 0.8^4 * 0.8 + 0.1 of the ambient lamp, in red
TEST(PictureRules, ThePlaceholderIsLit) {
    eSceneBuilder scene;
    support::eNode wall = scene.Node("wall");
    const eLightObject lamp{.color = {0.5F, 0.5F, 0.5F}};
    eLightObject elsewhere = lamp;
    elsewhere.listedNodes = {wall.Number()};
    scene.Node("lamp").Position(0, 0, 5).Object(lamp);
    scene.Node("elsewhere").Position(0, 0, 5).Object(elsewhere);
    scene.Node("glow").Object(eLightObject{.color = {0.1F, 0, 0}, .ambientOnly = true});
    StandaloneHost host(scene.Build());
    eSceneLights lights;
    for (const char* name : {"lamp", "elsewhere", "glow"}) {
        host::INode& node = *host.GetINodeByName(name);
        auto* object = dynamic_cast<host::LightObject*>(node.EvalWorldState(0).obj);
        lights.emplace_back(object->CreateLightDesc(node))->Update(0, {}, true, true);
    }
    eMirroringContext context(lights);
    context.node = host.GetINodeByName("wall");
    context.point = {3, 0, 1};
    context.normal = {0, 0, 1};
    context.ambientLight = {1, 1, 1};
    DumMtl({0.5F, 0.25F, 1}).Shade(context);
    EXPECT_NEAR(context.out.c.r, 0.35F + 0.03277F + 0.1F, 1e-4F);
    EXPECT_NEAR(context.out.c.g, 0.175F + 0.03277F, 1e-4F);
    EXPECT_NEAR(context.out.c.b, 0.7F + 0.03277F, 1e-4F);
}

}  // namespace
