#include "inspect/dds_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "inspect/inspect.h"
#include "texture/dds_header.h"

namespace {

// Catches a texture that is taken for a text, numbers of the wrong field, and a cut file kept quiet.
TEST(DdsView, SaysWhatIsInATexture) {
    eDdsHeader header;
    header.flags = ddsFlagsWithMips;
    header.width = 8;
    header.height = 4;
    header.firstLevelBytes = 16;
    header.mipCount = 2;
    header.capabilities = ddsManyLevels;
    header.pixelFormat = FindTextureFormat(0)->pixelFormat;
    const eDdsHeaderBytes head = WriteDdsHeader(header);
    std::vector<std::uint8_t> file(ddsMagic.begin(), ddsMagic.end());
    file.insert(file.end(), head.begin(), head.end());
    file.resize(file.size() + 16 + 8);

    const inspect::eInspection found = inspect::InspectContent("a.dds", file);
    ASSERT_EQ(found.problem.english, "");
    EXPECT_EQ(found.description["format"], "DXT1");
    EXPECT_EQ(found.description["levelCount"], 2);
    EXPECT_EQ(found.description["levels"][1],
              (inspect::eDescription{{"width", 4}, {"height", 2}, {"bytes", 8}}));

    file.pop_back();
    EXPECT_THAT(inspect::InspectContent("a.dds", file).problem.english, testing::HasSubstr(" at byte "));
}

}  // namespace
