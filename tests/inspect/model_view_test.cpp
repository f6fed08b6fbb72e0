#include <gtest/gtest.h>

#include "inspect/inspect.h"

namespace {

using inspect::eDescription;

eDescription Describe(const std::string& name, const std::string& text) {
    const auto found =
        inspect::InspectContent(name, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    EXPECT_EQ(found.problem.english, "");
    return found.description;
}

// Catches an animation that is not known by its content, and numbers of the wrong field.
TEST(AnimationView, SaysWhatIsInAnAnimation) {
    using namespace std::string_literals;
    const eDescription found = Describe(
        "", "EANM\1\0\6\0FRMS\3\0\0\0BMAP\2\0\0\0\1a\1bFRM2\2\0\1\1\x11\0\1\2\3\4\5\6\7\x8\x9\0\1\2"s);
    EXPECT_EQ(found["kind"], "animation");
    EXPECT_EQ(found["frames"], 3);
    EXPECT_EQ(found["sampledKeys"], 12);
    EXPECT_EQ(found["keptKeys"], 1);
    EXPECT_EQ(found["bones"][1]["bone"], "b");
    EXPECT_EQ(found["bones"][1]["flags"], "position hidden");
}

// Catches blocks that lose their names to those inside them, marks that look like missing values, and what is
// told twice or of a file that does not hold it.
TEST(ModelView, SaysWhatIsInModelTexts) {
    EXPECT_EQ(
        Describe("a.mdl", R"({skeleton {bone socket "a" {view poly "a" {lod 2 {last}}}{limits 35}{bone "b"}}}
                                   {"zones" {area "z" {circle2 {radius 1}{center 0 2}}{permit ""}}}
                                   {"volumes" {"v" {box 1 2 3}{bone "a"}{Position 0 0 1.5}}})"),
        eDescription::parse(R"({"kind": "model", "boneCount": 2, "skeleton": [{"bone": "a",
                  "joint": "socket", "placement": "identity", "limits": "35",
                  "views": [{"mesh": "a", "lod 2": {"last": true}}],
                  "children": [{"bone": "b", "placement": "identity"}]}],
                  "zones": [{"zone": "z", "kind": "area", "circle2": {"radius": "1", "center": "0 2"},
                  "permit": ""}],
                  "volumes": [{"volume": "v", "box": "1 2 3", "bone": "a", "placement": "Position 0 0 1.5"}]})"));
    EXPECT_EQ(
        Describe("a.def", R"({entity {skeleton {animation {binary "up" {speed 1.5}}}}
                                   {"volumes" {"v" {able clear {bullet}}}}{"land_patch"}})"),
        eDescription::parse(R"({"kind": "entity", "skeleton": {"animation": {"binary up": {"speed": "1.5"}}},
                  "volumes": [{"volume": "v", "able clear": {"bullet": true}}], "land_patch": true})"));
}

}  // namespace
