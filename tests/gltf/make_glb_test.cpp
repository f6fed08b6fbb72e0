// An exported model, turned back into glTF.
#include "gltf/make_glb.h"

#include <gmock/gmock.h>

#include <cmath>

#include "gltf/glb_reading.h"
#include "standalone/pictures/image.h"
#include "support/export_run.h"
#include "support/pictures.h"
#include "support/scene_builder.h"

namespace {

using gltf_test::eGlbReading;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::FloatNear;
using testing::HasSubstr;
using testing::Pointwise;

class MakeGlb : public testing::Test {
protected:
    // A model with one of everything.
    standalone::eSceneData Tank() {
        support::eSceneBuilder scene;
        scene.Settings().lastFrame = 10;
        art.Write("dents.png", support::Png({4, 4, 3, std::vector<std::uint8_t>(48, 200)}));
        art.Write("rust.tga", support::Tga({1, 2, 3, {250, 0, 10, 20, 30, 240}}));
        standalone::eStandardMaterial dented;
        dented.maps[host::kDiffuseMap].map = scene.Map(standalone::eBitmapMap{.file = art / "rust.tga"});
        dented.maps[host::kBumpMap].map = scene.Map(standalone::eNormalBumpMap{
            .normal = scene.Map(standalone::eBitmapMap{.file = art / "dents.png"})});
        const int iron = scene.Material("iron", dented);
        support::eNode tank =
            scene.Node("tank").Property("Model=units/tank").Property("animation=drive,all,0-10,drive,50");
        tank.Object(standalone::eHelperObject{});
        tank.Child("hull").Property("Poly").Material(iron).Position(1, 2, 3).Object(
            standalone::eMeshObject{support::GridMesh(1, 1)});
        tank.Child("twin").Property("Poly").Scale(-1, 1, 1).Object(
            standalone::eMeshObject{support::GridMesh(1, 1)});
        support::eNode turret = tank.Child("turret").Property("Poly").Property("IKType=revolute");
        turret.Object(standalone::eMeshObject{support::GridMesh(1, 1)});
        turret.VisibilityKey(5, 1).VisibilityKey(6, 0);
        for (const float frame : {0.F, 3.F, 5.F, 10.F}) {
            turret.Key({.frame = frame, .position = host::Point3{frame < 5 ? 0.F : 2.F, 0, 2}});
        }
        support::eNode tip = turret.Child("tip").Object(standalone::eHelperObject{}).Position(1, 0, 0);
        tank.Child("hose")
            .Property("Poly")
            .Position(0, 0, 1)
            .Object(standalone::eMeshObject{support::GridMesh(1, 1)})
            .Skin({turret, tip}, {{{0, 1}}, {{0, 0.75F}, {1, 0.25F}}, {{1, 1}}, {{0, 0.5F}, {1, 0.5F}}});
        tank.Child("armour")
            .Property("Volume=plate")
            .Property("Clear")
            .Property("bullet")
            .Position(0, 4, 0)
            .Object(standalone::eBoxObject{.width = 1, .length = 2, .height = 3});
        tank.Child("yard")
            .Property("Obstacle")
            .Object(standalone::eBoxObject{.width = 4, .length = 2, .height = 1});
        turret.Child("foot").Property("SupportPoint").Position(3, 0, 0).Object(standalone::eHelperObject{});
        return scene.Build();
    }

    support::eExportRun& Export() {
        run.emplace(Tank());
        run->Do();
        return *run;
    }
    gltf::eGlbFile Make(const gltf::eGlbOptions& options = {}) const {
        return gltf::MakeGlb(run->folder / "game/units/tank", options);
    }

    support::eTempFolder art;
    std::optional<support::eExportRun> run;
};

std::vector<float> Numbers(const nlohmann::json& list) {
    return list.get<std::vector<float>>();
}

TEST_F(MakeGlb, PutsEachThingWhereTheEngineSeesIt) {
    Export();
    const gltf::eGlbFile file = Make({.metresPerUnit = 0.5});
    EXPECT_THAT(file.warnings, ElementsAre());
    EXPECT_EQ(file.problem.english, "");
    const eGlbReading glb(file.content);
    // y is up; bones below the root stay in the space of the scene.
    EXPECT_THAT(Numbers(glb.Node("tank")["rotation"]),
                Pointwise(FloatNear(1e-4F), {-std::sqrt(0.5F), 0.F, 0.F, std::sqrt(0.5F)}));
    EXPECT_THAT(Numbers(glb.Node("hull")["translation"]), ElementsAre(1, 2, 3));
    EXPECT_EQ(glb.Node("turret")["extras"]["joint"], "revolute");
    // The grid looks up, and its triangles turn counter-clockwise seen from there.
    const auto hull = glb.Node("hull mesh")["mesh"].get<std::size_t>();
    const nlohmann::json& primitive = glb.json["meshes"][hull]["primitives"][0];
    const std::vector<float> places = glb.Values(primitive["attributes"]["POSITION"]);
    const auto corners = glb.Values<std::uint16_t>(primitive["indices"]);
    const auto at = [&](std::size_t corner, std::size_t axis) {
        return places[3 * std::size_t{corners[corner]} + axis];
    };
    EXPECT_GT((at(1, 0) - at(0, 0)) * (at(2, 1) - at(0, 1)) - (at(1, 1) - at(0, 1)) * (at(2, 0) - at(0, 0)),
              0);
    EXPECT_EQ(Numbers(glb.Node("twin")["scale"])[2], -1);
    EXPECT_THAT(Numbers(glb.Node("armour volume")["translation"]), ElementsAre(0, 4, 1.5F));
    EXPECT_EQ(glb.Node("armour volume")["extras"]["component"], "plate");
    EXPECT_EQ(glb.Node("armour volume")["extras"]["able clear"]["bullet"], true);
    EXPECT_THAT(Numbers(glb.Node("support point")["translation"]), ElementsAre(1.5F, 0, 0));
    // A wall around 4 by 2 metres, flat on the floor.
    const auto zone = glb.Node("yard obstacle")["mesh"].get<std::size_t>();
    const nlohmann::json& wall = glb.json["meshes"][zone]["primitives"][0]["attributes"]["POSITION"];
    EXPECT_THAT(Numbers(glb.json["accessors"][wall.get<std::size_t>()]["max"]),
                Pointwise(FloatNear(1e-3F), {2.F, 0.25F, 1.F}));
    EXPECT_EQ(glb.json["scenes"][0]["extras"]["model"]["boneCount"], file.bones);
    const auto bare = eGlbReading(Make({.hasMarks = false}).content);
    EXPECT_THROW(bare.Node("armour volume"), std::out_of_range);
}

TEST_F(MakeGlb, PlaysAClipAsTheEngineCarriesKeysForward) {
    Export();
    const eGlbReading glb(Make().content);
    const auto [frames, positions] = glb.Track("turret", "translation");
    EXPECT_EQ(frames.front(), 0);
    EXPECT_EQ(frames.back(), 10);
    EXPECT_THAT(std::vector(positions.end() - 3, positions.end()), ElementsAre(2, 0, 2));
    // Nothing between the ends of a stretch that stands still.
    EXPECT_THAT(frames, testing::Not(testing::Contains(7)));
    EXPECT_THAT(frames, testing::IsSupersetOf({3.F, 4.F, 5.F}));
    const auto [changes, scales] = glb.Track("turret mesh", "scale");
    std::vector<float> visible;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        visible.push_back(changes[i] * (scales[3 * i] != 0 ? 1 : -1));
    }
    EXPECT_THAT(visible, ElementsAre(0, 5, -6, -10));
    EXPECT_EQ(glb.json["animations"][0]["extras"]["speed"], "0.5");
}

TEST_F(MakeGlb, BindsASkinWhereItStandsAtRest) {
    Export();
    const eGlbReading glb(Make().content);
    const nlohmann::json& node = glb.Node("hose mesh");
    const nlohmann::json& skin = glb.json["skins"][node["skin"].get<std::size_t>()];
    // Its own bone first. The mesh stands a metre above the root, the tip 1, 0, 2 from it.
    ASSERT_EQ(skin["joints"].size(), 3U);
    EXPECT_EQ(glb.json["nodes"][skin["joints"][0].get<std::size_t>()]["name"], "hose");
    const std::vector<float> matrices = glb.Values(skin["inverseBindMatrices"]);
    for (std::size_t joint = 0; joint < 3; ++joint) {
        const bool isTip = glb.json["nodes"][skin["joints"][joint].get<std::size_t>()]["name"] == "tip";
        EXPECT_NEAR(matrices[16 * joint + 12], isTip ? -1 : 0, 1e-5);
        EXPECT_NEAR(matrices[16 * joint + 14], joint == 0 ? 0 : -1, 1e-5);
    }
    const nlohmann::json& attributes =
        glb.json["meshes"][node["mesh"].get<std::size_t>()]["primitives"][0]["attributes"];
    const std::vector<float> weights = glb.Values(attributes["WEIGHTS_0"]);
    const auto joints = glb.Values<std::uint8_t>(attributes["JOINTS_0"]);
    std::multiset<std::string> said;
    for (std::size_t i = 0; i < weights.size(); i += 4) {
        EXPECT_FLOAT_EQ(weights[i] + weights[i + 1], 1);
        for (std::size_t k = i; k < i + 2; ++k) {
            if (weights[k] > 0) {
                const auto bone = skin["joints"][joints[k]].get<std::size_t>();
                said.insert(glb.json["nodes"][bone]["name"].get<std::string>() + " " +
                            std::to_string(std::lround(weights[k] * 100)));
            }
        }
    }
    EXPECT_THAT(said, ElementsAre("tip 100", "tip 25", "tip 50", "turret 100", "turret 50", "turret 75"));
}

TEST_F(MakeGlb, UnpacksPictures) {
    Export();
    const eGlbReading glb(Make().content);
    const auto texel = [&](const char* name, double v) {
        for (const nlohmann::json& image : glb.json["images"]) {
            if (image["name"] == name) {
                const std::string png = glb.Bytes(image["bufferView"]);
                const auto decoded =
                    standalone::DecodeImage({reinterpret_cast<const std::uint8_t*>(png.data()), png.size()});
                const host::AColor c = decoded.image->Nearest(0.5, v);
                return std::vector<float>{std::round(c.r * 255), std::round(c.g * 255), std::round(c.b * 255),
                                          std::round(c.a * 255)};
            }
        }
        return std::vector<float>();
    };
    // The normal is that of the source again, which has 200 everywhere.
    EXPECT_THAT(texel("dents", 0.5), Pointwise(FloatNear(3), {200.F, 200.F, 200.F, 255.F}));
    EXPECT_THAT(texel("rust", 0.75), ElementsAre(250, 0, 10, 255));
    EXPECT_THAT(texel("rust", 0.25), ElementsAre(20, 30, 240, 255));
}

TEST_F(MakeGlb, RefusesABrokenModelWithItsPlace) {
    const support::eExportRun& written = Export();
    const std::string mesh = written.Read("units/tank/.mesh");
    const std::pair<std::string, std::string> faults[] = {
        {".mesh", mesh.substr(0, mesh.size() - 5)}, {"drive.anm", "EANM"},
        {".material", "{simple \"iron\""},          {"tank.def", "{entity"},
        {"tank.mdl", "{skeleton {bone \"tank\""},   {"tank.mdl", "{entity}"},
    };
    for (const auto& [name, content] : faults) {
        const std::string whole = written.Read("units/tank/" + name);
        written.folder.Write("game/units/tank/" + name, content);
        const gltf::eGlbFile file = Make();
        EXPECT_EQ(file.content, "") << name;
        EXPECT_THAT(file.problem.english, HasSubstr(name + ": ")) << content;
        written.folder.Write("game/units/tank/" + name, whole);
    }
    written.folder.Write("game/units/tank/second.mdl", "{skeleton}");
    EXPECT_THAT(Make().problem.english, HasSubstr("second.mdl tank.mdl"));
    EXPECT_THAT(gltf::MakeGlb(written.folder / "none", {}).problem.english,
                HasSubstr("there is no such folder"));
    EXPECT_THAT(gltf::MakeGlb(written.folder / "game", {}).problem.english, HasSubstr("there is no .mdl"));
}

TEST_F(MakeGlb, WarnsOfWhatIsNamedAndNotThere) {
    const support::eExportRun& written = Export();
    written.folder.Write("game/units/tank/.material", "{simple \"iron\" {diffuse \"lost\"}}");
    written.folder.Write("game/units/tank/tank.mdl",
                         "{skeleton {bone \"tank\" {view poly \"hull\"}{view poly \"ghost\" {lod 1}}}}");
    const gltf::eGlbFile file = Make({.hasMarks = false});
    const auto says = [](const char* words) {
        return testing::Field(&eBilingual::english, HasSubstr(words));
    };
    EXPECT_THAT(file.warnings, testing::IsSupersetOf({says("mesh ghost"), says("picture lost"),
                                                      says("bone turret, which is not there")}));
    EXPECT_EQ(file.problem.english, "");
}

}  // namespace
