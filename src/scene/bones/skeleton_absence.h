#pragma once

#include "base/bilingual.h"

class Export;

namespace host {
class INode;
}  // namespace host

// Why the skeleton of the current model does not hold the node, in the artist's words and without a full
// stop; empty if it does. Its bones must have been numbered.
eBilingual WhyOutsideSkeleton(Export& run, host::INode& node);

// The same for the one reason that the node, or one above it, is hidden; empty if none is.
eBilingual WhyHidden(const host::INode& node);
