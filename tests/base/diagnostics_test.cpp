// How the system ends and warns when something happens that nobody expects.
#include "base/diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "support/message_collector.h"

namespace {

class eReaderPlace : public xDebug::xCheckPoint::eInformer {
public:
    std::string Text() const override { return "reading a.set"; }
    std::string Location() const override { return "a.set, line 3"; }
    std::string Detail() const override { return "{block"; }
    bool HasDetail() const override { return true; }
};

TEST(Fail, ThrowsInTheModeForIt) {
    support::eMessageCollector messages;
    const xDebug::eHandlingMode mode(xDebug::throwInstead);
    const eReaderPlace place;
    const xDebug::xCheckPoint::eScope outer("loading");
    const xDebug::xCheckPoint::eScope inner(place);
    try {
        Fail("io/sdl_reader.cpp", 7, "broken");
        FAIL() << "came back";
    } catch (const xDebug::eEx_Custom& exception) {
        EXPECT_EQ(exception.message, "broken");
        EXPECT_EQ(exception.location, "a.set, line 3");
    }
    EXPECT_TRUE(xDebug::IsExceptionUnderWay());
    xDebug::ClearExceptionFlag();
    EXPECT_TRUE(messages.boxes.empty());
    EXPECT_EQ(messages.log,
              "============== Handled exception ===============\n"
              "broken (io/sdl_reader.cpp, 7)\n>> reading a.set\n> loading\n\n{block\n"
              "------------------------------------------------\n"
              ">> reading a.set\n> loading\n"
              "================================================\n");
}

TEST(Fail, OffersRetryInTheModeForIt) {
    support::eMessageCollector messages;
    messages.AnswerNext(platform::eBoxAnswer::Retry);
    const xDebug::eHandlingMode mode(xDebug::offerRetry, "Put the disk in.");
    EXPECT_THROW(Fail("C:\\zyr\\read.cpp", 1, "no disk"), xDebug::eEx_Retry);
    ASSERT_EQ(messages.boxes.size(), 1u);
    EXPECT_EQ(messages.boxes[0].title, "Exception, can be retried");
    EXPECT_EQ(messages.boxes[0].text, "no disk (\\read.cpp, 1)\nPut the disk in.");
    EXPECT_TRUE(messages.boxes[0].box.topMost);
    EXPECT_EQ(messages.boxes[0].box.icon, platform::eBoxIcon::Stop);
}

TEST(Warn, LogsAndComesBack) {
    support::eMessageCollector messages;
    Warn("io/name.cpp", 5, "odd");
    {
        auto first = std::make_unique<xDebug::xCheckPoint::eScope>("loading");
        const xDebug::xCheckPoint::eScope second("drawing");
        first.reset();
        Warn("io/name.cpp", 6, "odder");
    }
    Warn("io/name.cpp", 7, "even");
    EXPECT_EQ(messages.log, "odd (io/name.cpp, 5)\nodder (drawing)\neven (io/name.cpp, 7)\n");
    EXPECT_TRUE(messages.boxes.empty());
}

}  // namespace
