#pragma once

#include <string>

class Export;

namespace host {
class INode;
}  // namespace host

// Writes the inverse kinematics of a bone on mdlWriter: limits, speed and the end of a chain, as the node's
// properties tell them for a joint of that type (eIkType). `userProps` is the node's text of
// NormalizeUserProps.
void WriteIkLimits(Export& run, const host::INode& node, const std::string& userProps, int ikType);
