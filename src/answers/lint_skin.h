#pragma once

#include <vector>

#include "messages/message.h"

class Export;

namespace host {
class INode;
}  // namespace host

namespace answers {

// Vertices of a skin that follow no bone, have weights that do not sum up to 1 or follow more bones than the
// game takes, and skins whose bones do not go into one palette.
void LintSkin(Export& run, host::INode& node, std::vector<eMessage>& advice);

}  // namespace answers
