#pragma once

#include <vector>

#include "messages/message.h"

namespace host {
class INode;
}  // namespace host

namespace answers {

// Keys that nobody reads and that resemble known ones, and names and values that mix Latin letters with the
// Cyrillic ones that look alike.
void LintProperties(const host::INode& node, std::vector<eMessage>& advice);

}  // namespace answers
