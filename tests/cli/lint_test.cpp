// What a look ahead tells of the mistakes of artists: examples/mistakes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/program.h"
#include "support/source_tree.h"
#include "support/temp_folder.h"

namespace {

using support::eProgramResult;
using testing::HasSubstr;
using testing::IsSupersetOf;

class Lint : public testing::Test {
protected:
    eProgramResult Run(const std::string& example, const std::string& flags = {}) {
        const std::string scene = (support::SourceTree() / "examples" / example).string();
        return support::RunProgram(
            folder, "lint '" + scene + ".scene.json' --config '" + (folder / "config") + "' " + flags);
    }

    support::eTempFolder folder;
};

// "CODE at NODE", with what else places it.
const std::vector<std::string> kMistakes = {
    "animations.beyond-range at crane, late",
    "animations.file-name at crane, climb",
    "animations.no-selection-set at crane, nobody",
    "animations.read-as-number at crane, slip",
    "animations.reversed-range at crane, back",
    "animations.shared-file at crane, second",
    "bones.duplicate-name at twins/leg",
    "bones.matrix at crane/stretched/sheared",
    "bones.missing-level at levels/hull_lod2",
    "groups.member-without-mesh at crane/load/crate, Poly",
    "joints.unknown-type at crane/unknown_joint, IKType",
    "lint.cut-key at crane/cut_key, Экипаж_max",
    "lint.cut-value at crane/cut_value, title",
    "lint.empty-value at crane/no_ammo, ammo",
    "lint.lost-weight at crane/comb",
    "lint.many-bones at crane/comb",
    "lint.mark-switched-off at crane/shadowless, NoCastShadows",
    "lint.mixed-key at crane/russian_poly, Роly",
    "lint.mixed-name at crane/сab",
    "lint.model-size at dust",
    "lint.near-key at crane/misspelled_joint, IKTyp",
    "lint.near-key at crane/misspelled_poly, Pol",
    "lint.near-set at crane, animation",
    "lint.no-effect at crane/limit_of_another, IKLimit",
    "lint.no-effect at crane/thick_bone, Thickness",
    "lint.no-value at crane/no_layer, Layer",
    "lint.odd-key at crane/odd_key, rate?",
    "lint.repeated-key at crane/two_layers, Layer",
    "lint.still-animation at crane, frozen",
    "lint.swapped-limits at crane/swapped, IKMin",
    "lint.unknown-node at crane/list_of_names, CollideWith",
    "lint.unknown-node at lamp/shade, Mesh",
    "lint.unread-key at crane/spaced_key, LODLastOff",
    "lint.unweighted-vertices at crane/comb",
    "lint.value-form at crane/tagged_vol, Tags",
    "lint.weight-sum at crane/comb",
    "materials.duplicate-name at crane/rusty_too",
    "mesh.degenerate-triangles at crane/folded",
    "mesh.no-polygons at crane/empty_poly",
    "mesh.voxels at crane/voxels",
    "models.bodies at crane/old_body",
    "models.full-path at my_disk, Model",
    "models.no-path at no_model",
    "nodes.hidden-content at crane/hidden_yard",
    "preview.no-group at crane/view",
    "properties.not-written at crane/open_brace, Color",
    "properties.read-as-number at crane/speed_with_unit, IKSpeed",
    "shared-mesh.no-bone at lamp/shade, Mesh",
    "textures.missing at crane/bare",
    "textures.sides at crane/uneven",
    "volumes.duplicate-name at crane/same_vol",
    "volumes.matrix at crane/large_vol",
    "volumes.no-mesh at crane/solid_helper_vol",
    "volumes.not-convex at crane/dented_vol",
    "zones.several-polygons at crane/two_fields",
};

// Would catch a mistake that nobody tells, or tells at the wrong node, and mild words before grave ones.
TEST_F(Lint, EachMistakeIsToldAtItsNodeWithACure) {
    const eProgramResult result = Run("mistakes/mistakes", "--json");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.errors, "");
    const auto scenes = nlohmann::json::parse(result.output);
    ASSERT_EQ(scenes.size(), 1U);
    std::vector<std::string> told;
    for (const auto& message : scenes[0]["messages"]) {
        const auto& place = message["place"];
        std::string line = message["code"].get<std::string>() + " at " + place.value("node", "");
        line += place.contains("property") ? ", " + place["property"].get<std::string>() : "";
        line += place.contains("animation") ? ", " + place["animation"].get<std::string>() : "";
        told.push_back(line);
        EXPECT_NE(message["cure"], "");
    }
    EXPECT_THAT(told, IsSupersetOf(kMistakes));
    const std::string text = Run("mistakes/mistakes").output;
    EXPECT_LT(text.find("  crane/voxels\n    error mesh.voxels: "),
              text.find("  crane/comb\n    advice lint."));
    EXPECT_FALSE(folder.Has("config"));
    EXPECT_THAT(
        Run("mistakes/mistakes", "--language ru").output,
        HasSubstr("  crane/voxels\n    ошибка mesh.voxels: 'voxels': Экспорт воксельных мэшей больше не "
                  "поддерживается.\n      что делать: Замените Voxels на Poly.\n"));
}

// Would catch an animation with the wrong nodes, frames or file in the table.
TEST_F(Lint, TheTableSaysWhatEachAnimationMoves) {
    const auto scenes = nlohmann::json::parse(Run("animations", "--json").output);
    const nlohmann::json& rise = scenes[0]["animations"][1];
    EXPECT_EQ(rise["set"], "lift");
    EXPECT_EQ(rise["first"], 30);
    EXPECT_THAT(rise["file"], testing::EndsWith("/buildings/mill/up.anm"));
    EXPECT_EQ(rise["bones"], nlohmann::json({"cabin", "rotor"}));
    EXPECT_EQ(rise["overlaps"], nlohmann::json::parse(R"([{"with": "turn", "first": 30, "last": 30}])"));
    EXPECT_THAT(Run("skinned_strip").output, HasSubstr("bones that move: 1 of 3: upper\n"));
    EXPECT_THAT(Run("skinned_strip", "--language ru").output, HasSubstr("движутся кости: 1 из 3: upper\n"));
}

// Would catch a check that cries wolf, and a strict farm that lets advice pass.
TEST_F(Lint, CleanScenesAreClean) {
    for (const char* example : {"tank", "arm", "gameplay", "skinned_strip", "russian_names", "animations"}) {
        const eProgramResult result = Run(example, "--strict");
        EXPECT_EQ(result.exitCode, 0) << example << result.output;
        EXPECT_THAT(result.output, HasSubstr(": 0 messages\n"));
    }
    EXPECT_EQ(Run("structure").exitCode, 0);
    EXPECT_EQ(Run("structure", "--strict").exitCode, 4);
}

}  // namespace
