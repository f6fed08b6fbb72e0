#pragma once

#include <unordered_map>

namespace host {
class INode;
class Object;
}  // namespace host

// Who shows which object below one root: answers who shares an object without a walk per question.
struct eInstanceMap {
    struct eUse {
        host::INode* first = nullptr;  // the first node of the walk that shows the object
        bool isShared = false;         // a second one does
    };

    const host::INode* root = nullptr;  // null: nothing has been read
    std::unordered_map<const host::Object*, eUse> uses;
};
