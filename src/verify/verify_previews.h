#pragma once

#include "verify/finding.h"
#include "verify/side_nodes.h"
#include "written/written_model.h"

namespace verify {

// Compares the ready-made views of a model text with the groups of the scene at its time 0: the camera by its
// places, its angle of view and its roll, the lights by their kinds and numbers. Kinds: "missing preview",
// "foreign preview", "preview camera" that is on one side only, "camera position", "camera angle", "preview
// lights", "light kind", "light position", "light direction", "light number", "light colour".
void ComparePreviews(const eVerifiedScene& scene, const eSceneModel& model,
                     const std::vector<host::INode*>& nodes, const eWrittenModel& written,
                     const eTolerances& tolerances, eFindings& findings);

}  // namespace verify
