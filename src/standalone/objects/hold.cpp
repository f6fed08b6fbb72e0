#include "standalone/objects/hold.h"

#include <utility>

namespace standalone {

void eHold::Begin() {
    begins.push_back(changes.size());
}

void eHold::Cancel() {
    if (begins.empty()) {
        return;
    }
    const std::size_t begin = begins.back();
    begins.pop_back();
    while (changes.size() > begin) {
        changes.back()();
        changes.pop_back();
    }
}

void eHold::Record(std::function<void()> undo) {
    if (!begins.empty()) {
        changes.push_back(std::move(undo));
    }
}

}  // namespace standalone
