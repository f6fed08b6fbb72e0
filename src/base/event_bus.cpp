#include "base/event_bus.h"

#include <algorithm>

eEventable::~eEventable() {
    if (subscriptionCount > 0) {
        eEventable::Bus().UnsubscribeAll(*this);
    }
}

eEventBus& eEventable::Bus() {
    return eEventBus::Process();
}

eEventBus& eEventBus::Process() {
    static eEventBus bus;
    return bus;
}

void eEventBus::Subscribe(int message, eEventable& listener) {
    std::vector<eEventable*>& list = listeners[message];
    if (std::find(list.begin(), list.end(), &listener) == list.end()) {
        list.push_back(&listener);
        ++listener.subscriptionCount;
    }
}

void eEventBus::Unsubscribe(int message, eEventable& listener) {
    std::vector<eEventable*>& list = listeners[message];
    const auto entry = std::find(list.begin(), list.end(), &listener);
    if (entry == list.end()) {
        return;
    }
    --listener.subscriptionCount;
    if (dispatchDepth > 0) {
        *entry = nullptr;
    } else {
        list.erase(entry);
    }
}

void eEventBus::UnsubscribeAll(eEventable& listener) {
    for (const auto& [message, list] : listeners) {
        Unsubscribe(message, listener);
    }
}

void eEventBus::AddChild(eEventBus& child) {
    children.push_back(&child);
}

void eEventBus::Dispatch(int message) {
    ++dispatchDepth;
    if (const auto found = listeners.find(message); found != listeners.end()) {
        // By index: a listener may subscribe others.
        std::vector<eEventable*>& list = found->second;
        for (std::size_t index = 0; index < list.size(); ++index) {
            if (list[index] != nullptr) {
                list[index]->OnMessage(message);
            }
        }
        if (dispatchDepth == 1) {
            std::erase(list, nullptr);
        }
    }
    for (eEventBus* child : children) {
        child->Dispatch(message);
    }
    --dispatchDepth;
}
