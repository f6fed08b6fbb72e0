#pragma once

#include <vector>

#include "messages/message.h"

class Export;

namespace host {
class INode;
}  // namespace host

namespace answers {

// A model whose largest extent at the static frame no thing of a game has: the units of the scene are wrong.
void LintModelSize(Export& run, host::INode& node, std::vector<eMessage>& advice);

}  // namespace answers
