#include <gtest/gtest.h>

#include "inspect/inspect.h"

namespace {

using inspect::eDescription;

eDescription Describe(const std::string& name, const std::string& text) {
    const auto found =
        inspect::InspectContent(name, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    EXPECT_EQ(found.problem, "");
    return found.description;
}

// Catches blocks that lose their names to those inside them, marks that look like missing values, and what is
// told twice or of a file that does not hold it.
TEST(ModelView, SaysWhatIsInModelTexts) {
    EXPECT_EQ(Describe("a.mdl", R"({skeleton {bone socket "a" {view poly "a" {lod 2 {last}}}{limits 35}}}
                                   {"zones" {area "z" {circle2 {radius 1}{center 0 2}}{permit ""}}}
                                   {"volumes" {"v" {box 1 2 3}{bone "a"}{Position 0 0 1.5}}})"),
              eDescription::parse(R"({"kind": "model", "boneCount": 1, "skeleton": [{"bone": "a",
                  "joint": "socket", "placement": "identity", "limits": "35",
                  "views": [{"mesh": "a", "lod 2": {"last": true}}]}],
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
