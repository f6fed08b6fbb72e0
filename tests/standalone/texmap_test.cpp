#include "standalone/objects/texmap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/ansi.h"
#include "host/map_row.h"
#include "material/queries/shade_context.h"
#include "standalone/pictures/picture_problem.h"
#include "standalone/standalone_host.h"
#include "support/pictures.h"
#include "support/scene_builder.h"
#include "support/temp_folder.h"

namespace {

using namespace standalone;

class Paths : public host::AssetEnumCallback {
public:
    void RecordAsset(const host::AssetUser& asset) override { found.push_back(asset.GetFullFilePath()); }
    std::vector<std::string> found;
};

class Texmap : public ::testing::Test {
protected:
    Texmap() {
        folder.Write("art/Row.png",
                     support::Png({4, 1, 3, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}}));
        builder.Settings().file = folder / "art/scene.json";
    }

    // The scene as built so far, and one of its maps in slot `map` of a material.
    host::Texmap& Map(int map) {
        eStandardMaterial material;
        material.maps[host::kDiffuseMap].map = map;
        const std::string node = "n" + std::to_string(map);
        builder.Node(node).Material(builder.Material("m", material));
        host = std::make_unique<StandaloneHost>(builder.Build());
        return *host->GetINodeByName(node.c_str())->GetMtl()->GetSubTexmap(host::kDiffuseMap);
    }

    host::AColor At(host::Texmap& map, float u, float v, bool filtered = false) {
        context.uv = {u, v};
        context.filterMaps = filtered;
        const host::AColor color = map.EvalColor(context);
        auto* const rows = dynamic_cast<host::MapRow*>(&map);
        if (rows != nullptr && !filtered) {
            std::array<std::uint8_t, 8> row{}, pixel{};
            rows->EvalRow(std::array<host::DPoint2, 2>{{{0, 0}, context.uv}}, row);
            host::PutPixel(color, pixel.data() + 4);
            EXPECT_TRUE(std::equal(row.begin() + 4, row.end(), pixel.begin() + 4));
            std::array<std::uint8_t, 16> copied{}, shown{};
            if (rows->CopyRow(0, 4, 1, copied)) {
                rows->EvalRow(std::array<host::DPoint2, 4>{{{0.1, 0}, {0.3, 0}, {0.7, 0}, {0.9, 0}}}, shown);
                EXPECT_EQ(copied, shown);
            }
        }
        return color;
    }

    support::eTempFolder folder;
    support::eSceneBuilder builder;
    std::unique_ptr<StandaloneHost> host;
    eSceneLights noLights;
    SContext context{noLights};
};

void ExpectColor(const host::AColor& color, float r, float g, float b) {
    EXPECT_NEAR(color.r, r, 1e-5F);
    EXPECT_NEAR(color.g, g, 1e-5F);
    EXPECT_NEAR(color.b, b, 1e-5F);
}

// Would catch a transform applied in the wrong order or sense: tiling, then the turn, then the offset.
TEST_F(Texmap, CoordinatesAreTiledThenTurnedThenMoved) {
    host::Texmap& map = Map(builder.Map(
        eCheckerMap{}, {.source = 2, .channel = 3, .offset = {10, 20}, .tiling = {2, 3}, .angle = 90}));
    const host::Point3 point = host::Point3{1, 1, 5} * map.GetUVTransform();
    EXPECT_TRUE(point.Equals({10 - 3, 20 + 2, 5}, 1e-5F));
    EXPECT_EQ(map.GetUVWSource(), host::Texmap::kVertexColor);
    EXPECT_EQ(map.GetMapChannel(), 3);
}

// Would catch a picture that is not found beside the document, crops counted from the top, a curve in the
// wrong order, and filtering that ignores the context.
TEST_F(Texmap, ABitmapShowsItsCroppedTexelsThroughItsCurve) {
    host::Texmap& map = Map(builder.Map(eBitmapMap{.file = "row.PNG",
                                                   .cropOrigin = {0.5F, 0},
                                                   .cropSize = {0.5F, 1},
                                                   .amount = 0.5F,
                                                   .invert = true},
                                        {.tiling = {2, 1}}));
    ExpectColor(At(map, 0.1F, 0.5F), 0.5F, 0.5F, 0);
    ExpectColor(At(map, 0.3F, 0.5F), 0, 0, 0);
    ExpectColor(At(map, 0.6F, 0.5F), 0.5F, 0.5F, 0);  // the cropped part repeats
    ExpectColor(At(map, 0.25F, 0.5F, true), 0.25F, 0.25F, 0);
    EXPECT_NEAR(map.EvalMono(context), 0.5F / 3, 1e-5F);
    EXPECT_EQ(map.EvalColor(context).a, 1);
    ExpectColor(At(Map(builder.Map(eBitmapMap{.file = "row.PNG"})), 2.2F, -1.5F), 1, 0, 0);
}

// Would catch an asset list that hides missing files from those who ask for them, shows them to those who do
// not, tells a folder for a picture, or spells a path otherwise than the document does.
TEST_F(Texmap, AssetsAreListedAsTheyExist) {
    folder.MakeFolder("art/folder.png");
    const int present = builder.Map(eBitmapMap{.file = "row.PNG"});
    const int missing = builder.Map(eBitmapMap{.file = "sub\\Лес.png"_ansi});
    const int isFolder = builder.Map(eBitmapMap{.file = "folder.png"});
    const int lost = builder.Map(eBitmapMap{.file = "X:/wood.tga"});
    const int empty = builder.Map(eBitmapMap{});
    const int inner = builder.Map(eMixMap{.maps = {present, missing, isFolder}});
    const int outer = builder.Map(eMixMap{.maps = {inner, lost, empty}});
    host::Texmap& map = Map(outer);
    Paths existing, all;
    map.EnumAuxFiles(existing, 0);
    map.EnumAuxFiles(all, host::MtlBase::kListMissingFiles);
    const std::string art = folder / "art/";
    EXPECT_THAT(existing.found, ::testing::ElementsAre(art + "row.PNG"));
    EXPECT_THAT(all.found, ::testing::ElementsAre(art + "row.PNG", art + "sub\\Лес.png"_ansi,
                                                  art + "folder.png", "X:/wood.tga"));
    EXPECT_EQ(map.IdentityOrder(), static_cast<std::uintptr_t>(outer) + 1);
}

// Would catch the wrong stand-in for a missing input, and a mask that is ignored.
TEST_F(Texmap, MapsOfMapsCombineTheirInputs) {
    const int red = builder.Map(eOtherMap{.color = {1, 0, 0}});
    const int grey = builder.Map(eOtherMap{.color = {0.5F, 0.5F, 0.5F}});
    const int quarter = builder.Map(eOtherMap{.color = {0.75F, 0, 0}});
    const int byAmount = builder.Map(eMixMap{.maps = {red, grey, -1}, .amount = 0.5F});
    const std::pair<int, host::Color> cases[] = {
        {byAmount, {0.75F, 0.25F, 0.25F}},
        {builder.Map(eMixMap{.maps = {red, -1, quarter}, .amount = 1}), {0.75F, 0, 0}},
        {builder.Map(eRgbMultiplyMap{.maps = {byAmount, grey}}), {0.375F, 0.125F, 0.125F}},
        {builder.Map(eRgbMultiplyMap{.maps = {-1, red}}), {1, 0, 0}},
        {builder.Map(eNormalBumpMap{.normal = red}), {1, 0, 0}},
        {builder.Map(eVertexColorMap{}), {1, 1, 1}},
    };
    for (const auto& [map, color] : cases) {
        ExpectColor(At(Map(map), 0, 0), color.r, color.g, color.b);
    }
}

// Would catch a missing or bad picture that ends the run instead of being black, and another spelling
// refused.
TEST_F(Texmap, APictureThatCannotBeReadIsBlack) {
    folder.Write("art/text.png", "no picture at all, but long enough for any header");
    ExpectColor(At(Map(builder.Map(eBitmapMap{.file = "text.png"})), 0.5F, 0.5F), 0, 0, 0);
    eBilingual problem;
    EXPECT_EQ(host->TheManager().Load({folder / "art/nothing.png"}, &problem), nullptr);
    EXPECT_EQ(problem, LockedPicture());
    EXPECT_EQ(host->TheManager().Load({folder / "art"}, &problem), nullptr);
    EXPECT_EQ(problem, FolderForPicture());
    host::Bitmap* bitmap = host->TheManager().Load({folder / "ART/ROW.PNG"}, &problem);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->Width(), 4);
    bitmap->DeleteThis();
}

// Would catch a map that shows a picture which has been released, from memory that others have by then.
TEST_F(Texmap, AReleasedPictureIsDecodedAnew) {
    host::Texmap& map = Map(builder.Map(eBitmapMap{.file = "row.png"}));
    host::Bitmap* bitmap = host->TheManager().Load({folder / "art/row.png"}, nullptr);
    ExpectColor(At(map, 0.1F, 0.5F), 1, 0, 0);
    folder.Write("art/Row.png", support::Png({1, 1, 3, {0, 0, 255}}));
    ExpectColor(At(map, 0.1F, 0.5F), 1, 0, 0);
    bitmap->DeleteThis();
    ExpectColor(At(map, 0.1F, 0.5F), 0, 0, 1);
}

}  // namespace
