#pragma once

#include "host/node.h"

// The node's matrix against its ParentBone at the time, both without scale; scene units.
host::Matrix3 MatrixInParentBone(const host::INode& node, host::TimeValue t);
