// Static objects that enter themselves in one list per kind, without allocation and in the order of their
// construction.
#pragma once

#include "base/diagnostics.h"
#include "base/format.h"

template <class Node>
class eRegistrationList;

// Base of a node type: class eSetting : public eIntrusiveRegistrator<eSetting>.
template <class Node>
class eIntrusiveRegistrator {
public:
    eIntrusiveRegistrator(const eIntrusiveRegistrator&) = delete;
    eIntrusiveRegistrator& operator=(const eIntrusiveRegistrator&) = delete;

    Node* Next() const { return next; }

protected:
    eIntrusiveRegistrator() = default;
    ~eIntrusiveRegistrator() = default;

private:
    friend class eRegistrationList<Node>;
    Node* next = nullptr;
    bool registered = false;
};

// The list of a kind, a function-local static, so that it stands before its first node. A second list of the
// same kind is fatal: nodes would be spread over both.
template <class Node>
class eRegistrationList {
public:
    explicit eRegistrationList(const char* kind) {
        if (listCount != 0) {
            Fail(__FILE__, __LINE__, (format("Multiply static registration list of %1%") % kind).Text());
        }
        ++listCount;
    }
    ~eRegistrationList() { --listCount; }
    eRegistrationList(const eRegistrationList&) = delete;
    eRegistrationList& operator=(const eRegistrationList&) = delete;

    // At the end; a node that is in the list already stays where it is.
    void Append(Node& node) {
        if (node.registered) {
            return;
        }
        node.registered = true;
        (last != nullptr ? last->next : first) = &node;
        last = &node;
    }
    Node* First() const { return first; }

private:
    static inline int listCount = 0;
    Node* first = nullptr;
    Node* last = nullptr;
};
