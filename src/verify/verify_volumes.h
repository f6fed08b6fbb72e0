#pragma once

#include "verify/finding.h"
#include "verify/side_nodes.h"
#include "written/written_model.h"

namespace verify {

// Compares the volumes of a model text with the nodes of the scene at the static frame: their shapes and
// sizes, the bone that each hangs from, and its place in it. Kinds: "missing volume", "foreign volume",
// "volume shape", "volume size", "volume bone", "volume position", "volume rotation", "volume scale", "volume
// vertices".
void CompareVolumes(const eVerifiedScene& scene, const std::vector<host::INode*>& nodes,
                    const eWrittenModel& written, const eTolerances& tolerances, eFindings& findings);

}  // namespace verify
