// Messages from anyone to whoever has subscribed.
#pragma once

#include <map>
#include <vector>

// The process is about to end after a fatal error.
inline constexpr int messageFatalExit = 22;

class eEventBus;

// A listener. Its end takes it off the bus.
class eEventable {
public:
    virtual ~eEventable();
    virtual void OnMessage(int message) = 0;
    // The bus where it subscribes: the process's own.
    virtual eEventBus& Bus();

private:
    friend class eEventBus;
    int subscriptionCount = 0;
};

class eEventBus {
public:
    // The bus of the process, made at its first use.
    static eEventBus& Process();

    // A second subscription to the same message has no effect.
    void Subscribe(int message, eEventable& listener);
    void Unsubscribe(int message, eEventable& listener);
    void UnsubscribeAll(eEventable& listener);
    void AddChild(eEventBus& child);

    // Calls the listeners in the order of their subscription, then the child buses. Listeners may come and go
    // meanwhile.
    void Dispatch(int message);

private:
    // A listener that goes during a dispatch leaves null here, so that the lists are not disturbed.
    std::map<int, std::vector<eEventable*>> listeners;
    std::vector<eEventBus*> children;
    int dispatchDepth = 0;
};
