#pragma once

#include "verify/finding.h"
#include "verify/side_nodes.h"
#include "written/written_model.h"

namespace verify {

// Compares the zones of a model text with the nodes of the scene at the static frame: what they are, and
// their figures in the plane of the model. A box around a mesh must hold the mesh and none of its sides be
// loose; that no other direction makes it much smaller is asked too. Kinds: "missing zone", "foreign zone",
// "zone kind", "zone figure", "zone position", "zone size", "zone axis".
void CompareZones(const eVerifiedScene& scene, const eSceneModel& model,
                  const std::vector<host::INode*>& nodes, const eWrittenModel& written,
                  const eTolerances& tolerances, eFindings& findings);

// True if its "Obstacle" has switched the zone off.
bool IsSwitchedOff(const host::INode& node);

}  // namespace verify
