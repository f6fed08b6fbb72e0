#pragma once

#include <string>
#include <string_view>

namespace host {
class INode;
}  // namespace host

// The exporter's own reader of a node's user-defined properties. It differs from the host's
// (INode::GetUserPropString): lines become pairs of one text (prop_text.h), blanks stay where they are, and
// control characters and all bytes from 0x80 up are dropped. Keys are compared without regard to case.

// The pairs of the node's properties, each ended by ";". With `dropReserved` pairs with an empty key and
// those that configure the export itself are left out.
std::string NormalizeUserProps(const host::INode& node, bool dropReserved);

// True if the node's own-reader text has the key, whatever its value. Costs one pass over the properties and
// no allocation; `key` is ASCII and not empty.
bool HasUserProp(const host::INode& node, std::string_view key);
