#pragma once

#include "verify/finding.h"
#include "verify/scene_model.h"
#include "written/written_model.h"

namespace verify {

// Compares the bones of a model text with the scene at the static frame: their names and who hangs from whom,
// and their places. Kinds: "missing model", "missing bone", "foreign bone", "bone above", "bone position",
// "bone rotation".
void CompareSkeleton(const eVerifiedScene& scene, const eSceneModel& model, const eWrittenModel& written,
                     const eTolerances& tolerances, eFindings& findings);

}  // namespace verify
