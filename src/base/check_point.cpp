#include "base/check_point.h"

#include <utility>
#include <vector>

#include "base/diagnostics.h"
#include "base/thread_storage.h"

namespace xDebug::xCheckPoint {
namespace {

struct eEntry {
    std::string text;
    const eInformer* informer = nullptr;  // null for a plain text
    const eScope* scope = nullptr;        // whose entry it is

    std::string Text() const { return informer != nullptr ? informer->Text() : text; }
    std::string Location() const { return informer != nullptr ? informer->Location() : text; }
};

using eStack = std::vector<eEntry>;

eStack& ThreadStack() {
    static eThreadStorage<eStack> storage;
    return storage.Get();
}

}  // namespace

eScope::eScope(std::string text) {
    ThreadStack().push_back({std::move(text), nullptr, this});
}
eScope::eScope(const eInformer& informer) {
    ThreadStack().push_back({{}, &informer, this});
}
eScope::~eScope() {
    std::erase_if(ThreadStack(), [this](const eEntry& entry) { return entry.scope == this; });
}

std::string StackText() {
    const eStack& stack = ThreadStack();
    std::string text;
    for (std::size_t depth = stack.size(); depth > 0; --depth) {
        text += std::string(depth, '>') + " " + stack[depth - 1].Text() + "\n";
    }
    return text;
}

std::string InnermostDetail() {
    const eStack& stack = ThreadStack();
    for (auto entry = stack.rbegin(); entry != stack.rend(); ++entry) {
        if (entry->informer != nullptr && entry->informer->HasDetail()) {
            return entry->informer->Detail();
        }
    }
    return {};
}

std::string InnermostLocation() {
    return ThreadStack().empty() ? std::string() : ThreadStack().back().Location();
}

}  // namespace xDebug::xCheckPoint
