// What comes out of the strip generator, small meshes by hand and properties on large ones.
#include "mesh/strips/strip_generator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>

#include "base/diagnostics.h"
#include "mesh/strip_runner.h"
#include "mesh/strips/strip_messages.h"
#include "mesh/strips/strip_validation.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Would catch: a degenerate or repeated triangle in the result, a different repetition taken for one, failure
// where there is something left, success where there is nothing.
TEST(GenerateStrips, DropsDegenerateAndRepeatedTriangles) {
    EXPECT_THAT(RunStrips({0, 1, 2, 3, 3, 4, 2, 1, 3}).indices, ElementsAre(0, 1, 2, 2, 1, 3));
    EXPECT_THAT(RunStrips({0, 1, 2, 0, 1, 2}).indices, ElementsAre(0, 1, 2));
    EXPECT_EQ(RunStrips({0, 1, 2, 1, 2, 0}).indices.size(), 6u);
    EXPECT_EQ(RunStrips({0, 1, 2, 0, 2, 1}).indices.size(), 6u);
    EXPECT_THAT(RunStrips({0, 1, 2, 1, 2}).indices, ElementsAre(0, 1, 2));
}

TEST(GenerateStrips, FailsWithoutATriangle) {
    for (const std::vector<std::uint16_t>& indices :
         {std::vector<std::uint16_t>{}, {1}, {0, 1}, {5, 5, 6}, {0, 1, 1, 2, 3, 2}}) {
        auto groups = std::make_unique<ePrimitiveGroup[]>(1);
        std::uint16_t numGroups = 7;
        EXPECT_FALSE(
            GenerateStrips(indices.data(), static_cast<unsigned>(indices.size()), groups, numGroups, true));
        EXPECT_EQ(numGroups, 0);
        EXPECT_EQ(groups, nullptr);
    }
}

// Would catch: a third face that takes the place of one of the first two, a missing, altered or repeated
// line, a repetition that goes unreported because it is dropped.
TEST(GenerateStrips, ReportsThirdFacesOnAnEdge) {
    const std::string line = "BuildStripifyInfo: > 2 triangles on an edge... uncertain consequences\n";
    const eStripRun three = RunStrips({0, 1, 2, 2, 1, 3, 1, 2, 4});
    EXPECT_EQ(three.messages, line);
    EXPECT_THAT(three.indices, ElementsAre(0, 1, 2, 2, 1, 3, 1, 2, 4));
    EXPECT_EQ(RunStrips({0, 1, 2, 2, 1, 3, 0, 1, 2}).messages, line);
    testing::internal::CaptureStdout();
    stripMessageSink(line.c_str());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), line);
}

// Would catch: a validation that lets a stranger through or that takes offence at another first corner.
TEST(ValidateTriangles, LooksForTheCyclicOrder) {
    const std::vector<std::uint16_t> input{0, 1, 2, 2, 1, 3, 5, 5, 6};
    const auto accepts = [&input](std::vector<std::uint16_t> output) {
        return ValidateTriangles(input, output);
    };
    EXPECT_TRUE(accepts({0, 1, 2, 1, 3, 2}));
    EXPECT_TRUE(accepts({3, 2, 1, 9, 9, 9}));
    EXPECT_FALSE(accepts({0, 2, 1}));
    EXPECT_FALSE(accepts({0, 1, 2, 0, 1, 3}));
    EXPECT_FALSE(accepts({100, 1, 2}));
}

ePrimitiveGroup Group(int type, const std::vector<std::uint16_t>& indices) {
    ePrimitiveGroup group{type, static_cast<unsigned>(indices.size()),
                          std::make_unique<std::uint16_t[]>(indices.size())};
    std::copy(indices.begin(), indices.end(), group.indices.get());
    return group;
}

// Would catch: numbering that starts anew in each group, that follows the old numbers, or that loses the
// type.
TEST(RemapIndices, NumbersByFirstUseOverAllGroups) {
    const std::array<ePrimitiveGroup, 2> groups{Group(0, {7, 3, 9, 3, 7, 1}), Group(2, {9, 0, 1})};
    std::unique_ptr<ePrimitiveGroup[]> remapped;
    RemapIndices(groups.data(), 2, 10, remapped);
    EXPECT_THAT(IndicesOf(remapped[0]), ElementsAre(0, 1, 2, 1, 0, 3));
    EXPECT_THAT(IndicesOf(remapped[1]), ElementsAre(2, 4, 3));
    EXPECT_EQ(remapped[1].type, 2);
}

// Would catch: a write behind the end of the table.
TEST(RemapIndices, StopsAtAnIndexBeyondTheVertices) {
    const xDebug::eHandlingMode mode(xDebug::throwInstead | xDebug::noLogRecord);
    const std::array<ePrimitiveGroup, 1> groups{Group(0, {0, 1, 2})};
    std::unique_ptr<ePrimitiveGroup[]> remapped;
    EXPECT_THROW(RemapIndices(groups.data(), 1, 2, remapped), xDebug::eEx_Custom);
    xDebug::ClearExceptionFlag();
}

}  // namespace
