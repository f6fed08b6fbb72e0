#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/node_path.h"
#include "messages/message.h"
#include "messages/phrase.h"
#include "run/export.h"
#include "scene/properties/node_kind.h"

namespace answers {

// A line of a node's properties. All point into the node's text.
struct ePropertyLine {
    std::string_view key;    // without the blanks around it
    std::string_view value;  // the same, up to the end of the line
    bool hasValueSign = false;
};

// The lines of a property text that are not empty, in order.
std::vector<ePropertyLine> PropertyLines(std::string_view buffer);

// A node under examination and what there is to say of it.
struct eNodeLint {
    Export& run;
    host::INode& node;
    std::vector<eMessage>& advice;
    std::vector<ePropertyLine> lines;
    eNodeKind kind = eNodeKind::Ordinary;

    // Advice about a property of the node, or about the node itself with an empty one.
    template <class... Values>
    void Add(eMessageId id, std::string_view property, const Values&... values) {
        advice.push_back(
            MakeMessage(id, {.node = host::PathOf(node), .property = std::string(property)}, values...));
    }
};

}  // namespace answers
