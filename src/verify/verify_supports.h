#pragma once

#include "verify/finding.h"
#include "verify/side_nodes.h"
#include "written/written_model.h"

namespace verify {

// Compares the support points of a model text with the nodes of the scene at the static frame: whole units of
// the scene in the space of the bone above, bone by bone in the order of the tree. Kinds: "missing support
// points", "foreign support points", "support points" with another number of them, "support point".
void CompareSupports(const eVerifiedScene& scene, const std::vector<host::INode*>& nodes,
                     const eWrittenModel& written, eFindings& findings);

}  // namespace verify
