// What is told of a node: what became of it, and by which rule.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "support/program.h"

namespace {

using nlohmann::json;
using support::eProgramResult;
using testing::HasSubstr;

// A skinned rope, a part of a group, an instance, a level of detail, a volume with a child, hidden nodes, and
// two nodes of one name.
constexpr const char* kScene = R"({"scene": 1, "range": [0, 4],
    "materials": {"tin": {"type": "standard", "name": "tin"}},
    "objects": {"wheel": {"type": "box", "width": 1, "length": 2, "height": 3}},
    "selectionSets": [{"name": "left", "nodes": ["wheel_l"]}],
    "nodes": [
      {"name": "cart", "properties": ["Model=units/cart", "animation=roll,left,0-4"], "object": {"type": "helper"},
       "children": [
        {"name": "wheel_l", "properties": ["Poly"], "material": "tin", "object": "wheel"},
        {"name": "wheel_l_lod1", "properties": ["Poly"], "object": {"type": "box", "width": 1, "length": 1, "height": 1}},
        {"name": "wheel_r", "properties": ["Poly"], "object": "wheel", "transform": {"position": [0, 9, 0]}},
        {"name": "box", "properties": ["Poly"], "group": "head", "object": {"type": "helper"}, "children": [
          {"name": "lid", "group": "member", "object": {"type": "box", "width": 2, "length": 2, "height": 2}}]},
        {"name": "rope", "properties": ["Poly"], "material": "tin",
         "object": {"type": "mesh", "vertices": [[0, 0, 0], [4, 0, 0], [0, 1, 0]], "faces": [[0, 1, 2]],
          "modifiers": [{"type": "skin", "bones": ["wheel_l", "wheel_r"],
                         "weights": [[[0, 1]], [[1, 1]], [[0, 0.5], [1, 0.5]]]}]}},
        {"name": "tie", "children": [{"name": "knot", "object": {"type": "helper"}}]},
        {"name": "hull", "properties": ["Volume=armor", "Obstacle"], "object": {"type": "box", "width": 1, "length": 1, "height": 1},
         "children": [{"name": "pin", "object": {"type": "helper"}}]},
        {"name": "air", "properties": ["Volume"], "object": {"type": "helper"}},
        {"name": "shed", "hidden": true, "object": {"type": "helper"}, "children": [
          {"name": "tool", "object": {"type": "helper"}}, {"name": "pin", "object": {"type": "helper"}}]}]},
      {"name": "stray", "object": {"type": "helper"}}]})";

class Why : public testing::Test {
protected:
    Why() { folder.Write("cart.scene.json", kScene); }

    eProgramResult Ask(const std::string& node, const std::string& flags = {}) const {
        return support::RunProgram(folder, "why '" + (folder / "cart.scene.json") + "' '" + node +
                                               "' --resource-root '" + (folder / "game") + "' --config '" +
                                               (folder / "config") + "' " + flags);
    }
    json Answer(const std::string& node) const {
        const eProgramResult result = Ask(node, "--json");
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_FALSE(folder.Has("game"));
        return json::parse(result.output);
    }
    // The names of the files, without their folder.
    json Files(const json& answer) const {
        const std::size_t length = (folder / "game/units/cart/").size();
        json names = json::array();
        for (const std::string path : answer.at("files")) {
            names.push_back(path.substr(length));
        }
        return names;
    }

    support::eTempFolder folder;
};

// Would catch: an answer that disagrees with the files, or a rule laid at the wrong door.
TEST_F(Why, TellsWhatBecameOfANode) {
    const json wheel = Answer("wheel_l");
    EXPECT_EQ(wheel.at("fate"), "bone");
    EXPECT_EQ(wheel.at("bone"), 1);
    EXPECT_EQ(wheel.at("parentBone"), "cart");
    EXPECT_EQ(wheel.at("meshBy"), "Poly");
    EXPECT_EQ(wheel.at("subMeshes"), json::parse(R"([{"material": "tin", "triangles": 12, "palette": []}])"));
    EXPECT_EQ(wheel.at("animations"), json({"roll"}));
    EXPECT_EQ(Files(wheel), json({".material", ".mesh", "anim.txt", "cart.mdl", "roll.anm", "tex1_0.bmp"}));

    const json detail = Answer("CART/wheel_l_LOD1");
    EXPECT_EQ(detail.at("fate"), "level of detail");
    EXPECT_EQ(detail.at("level"), 1);

    const json instance = Answer("wheel_r");
    EXPECT_EQ(instance.at("shows"), "cart/wheel_l");
    EXPECT_EQ(instance.at("mesh"), folder / "game/units/cart/.mesh");
    EXPECT_EQ(instance.at("animations"), json::array());

    const json part = Answer("lid");
    EXPECT_EQ(part.at("fate"), "part of a group");
    EXPECT_EQ(part.at("feeds"), "cart/box");
    EXPECT_EQ(part.at("faces"), 12);
    EXPECT_EQ(Files(part), json({".mesh"}));
    EXPECT_EQ(Answer("knot").at("parentBone"), "cart") << "a node without object is no bone";

    EXPECT_EQ(Answer("rope").at("subMeshes").at(0).at("palette"), json({"wheel_l", "wheel_r"}));
    const json volume = Answer("hull");
    EXPECT_EQ(volume.at("fate"), "volume");
    EXPECT_EQ(volume.at("decidedBy"), "Volume=armor");
    EXPECT_EQ(volume.at("also"), "zone");
    EXPECT_EQ(Files(volume), json({"cart.def", "cart.mdl"}));
}

TEST_F(Why, BlamesTheNodeThatLeavesItOut) {
    const auto blame = [&](const std::string& node) {
        const json answer = Answer(node);
        EXPECT_EQ(answer.at("fate"), "left out") << node;
        return answer.at("rule").get<std::string>() + " " + answer.at("blame").get<std::string>();
    };
    EXPECT_EQ(blame("shed"), "hidden cart/shed");
    EXPECT_EQ(blame("tool"), "hidden cart/shed");
    EXPECT_EQ(blame("cart/hull/pin"), "below-no-bone cart/hull");
    EXPECT_EQ(blame("stray"), "no-model stray");
    EXPECT_EQ(blame("air"), "no-triangles cart/air");
    EXPECT_THAT(Ask("tool").output,
                HasSubstr("why: the node cart/shed takes all below it along: it is hidden\n"));
}

// Would catch a word that stays English, and names or codes of properties that are translated.
TEST_F(Why, SpeaksRussian) {
    const std::string bone = Ask("rope", "--language ru").output;
    EXPECT_THAT(bone, HasSubstr("стал: кость\nрешило: его объект\nмодель: cart\n"));
    EXPECT_THAT(
        bone,
        HasSubstr("части мэша:\n  - материал: tin\n    треугольников: 1\n    палитра: wheel_l wheel_r\n"));
    EXPECT_THAT(bone, HasSubstr("анимации: нет\n"));
    const std::string below = Ask("cart/hull/pin", "--language ru").output;
    EXPECT_THAT(
        below,
        HasSubstr("почему: узел cart/hull: объем (по 'Volume=armor'), а ниже ничего не экспортируется\n"));
    EXPECT_THAT(Ask("weel_r", "--language ru").errors,
                HasSubstr("нет узла 'weel_r'; возможно, имелся в виду 'wheel_r'?"));
    EXPECT_EQ(Ask("hull", "--json --language ru").output, Ask("hull", "--json").output);
}

TEST_F(Why, FindsTheNodeThatIsMeant) {
    const eProgramResult unknown = Ask("weel_r");
    EXPECT_THAT(unknown.errors, HasSubstr("did you mean 'wheel_r'?"));
    const std::string scene = folder / "cart.scene.json";
    EXPECT_THAT(support::RunProgram(folder, "why '" + scene + "' wheel_r --config '" + scene + ".d'").output,
                HasSubstr("mesh: d:/thegame/units/cart/.mesh\n"))
        << "the studio's drive is not there";
    const eProgramResult several = Ask("pin");
    EXPECT_EQ(several.exitCode, 2);
    EXPECT_THAT(several.errors, HasSubstr("\n  cart/hull/pin\n  cart/shed/pin\n"));
    EXPECT_EQ(Answer("pin#2").at("node"), "cart/shed/pin");
}

}  // namespace
