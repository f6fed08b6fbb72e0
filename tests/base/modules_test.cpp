// Messages, modules, registration lists and per-thread objects.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "base/diagnostics.h"
#include "base/event_bus.h"
#include "base/global_collector.h"
#include "base/thread_storage.h"
#include "support/message_collector.h"

namespace {

using testing::ElementsAre;

class eListener : public eEventable {
public:
    eListener(std::vector<int>& heardBy, int listenerNumber) : heard(heardBy), number(listenerNumber) {}

    void OnMessage(int message) override {
        heard.push_back(number * 100 + message);
        if (onMessage) {
            onMessage();
        }
    }

    std::function<void()> onMessage;

private:
    std::vector<int>& heard;
    int number;
};

// Would catch: a list shifted under a running dispatch, a doubled subscription, a call to a dead listener.
TEST(EventBus, SurvivesChangesDuringDispatch) {
    std::vector<int> heard;
    eEventBus& bus = eEventBus::Process();
    eListener first(heard, 1);
    auto second = std::make_unique<eListener>(heard, 2);
    eListener third(heard, 3);
    for (eListener* listener : {&first, second.get(), &third, &first}) {
        bus.Subscribe(50, *listener);
    }
    first.onMessage = [&] {
        second.reset();
        bus.Unsubscribe(50, first);
    };
    bool nested = false;
    third.onMessage = [&] {
        if (!nested) {
            nested = true;
            bus.Subscribe(50, first);
            bus.Dispatch(50);
        }
    };
    bus.Dispatch(50);
    EXPECT_THAT(heard, ElementsAre(150, 350, 350, 150));
}

TEST(EventBus, PassesOnToItsChildren) {
    std::vector<int> heard;
    eEventBus parent;
    eEventBus child;
    eListener listener(heard, 1);
    parent.AddChild(child);
    child.Subscribe(51, listener);
    parent.Dispatch(51);
    child.UnsubscribeAll(listener);
    parent.Dispatch(51);
    EXPECT_THAT(heard, ElementsAre(151));
}

TEST(GlobalCollector, IsTheOnlyWayOutForAModule) {
    support::eMessageCollector messages;
    const xDebug::eHandlingMode mode(xDebug::throwInstead);
    eGlobalCollector::Instance().Destroy(std::make_unique<eGlobalModule>());
    auto* module = new eGlobalModule;
    EXPECT_THROW(delete module, xDebug::eEx_Custom);
    xDebug::ClearExceptionFlag();
    EXPECT_THAT(messages.log, testing::HasSubstr("trying to destroy global module by illeal way"));
}

TEST(GlobalCollector, StartsInOrderAndDropsPendingWorkAtAFatalEnd) {
    support::eMessageCollector messages;
    static std::string order;
    eGlobalCollector& collector = eGlobalCollector::Instance();
    collector.Register({"one", [] { order += "+1"; }, [] { order += "-1"; }});
    collector.Register({"two", [] { order += "+2"; }, [] { order += "-2"; }});
    collector.StartModules();
    collector.StopModules();
    EXPECT_EQ(order, "+1+2-2-1");
    EXPECT_THAT(messages.log, testing::HasSubstr("Libraries (4): app.start, app, one, two"));
    collector.AddPending([] { order = "done"; });
    eEventBus::Process().Dispatch(messageFatalExit);
    collector.RunPending();
    EXPECT_EQ(order, "+1+2-2-1");
}

TEST(ThreadStorage, GivesEachThreadItsOwnObjectAndFreesAll) {
    static int alive = 0;
    struct eCounted {
        eCounted() { ++alive; }
        ~eCounted() { --alive; }
        int value = 0;
    };
    {
        eThreadStorage<eCounted> storage;
        storage.Get().value = 5;
        std::thread([&] { EXPECT_EQ(storage.Get().value, 0); }).join();
        EXPECT_EQ(storage.Get().value, 5);
        EXPECT_EQ(alive, 2);
    }
    EXPECT_EQ(alive, 0);
}

}  // namespace
