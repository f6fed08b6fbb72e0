#pragma once

#include "verify/finding.h"
#include "verify/side_nodes.h"
#include "written/written_model.h"

namespace verify {

// Compares what artists write at nodes with what stands of it in the texts. In the model text: the joint,
// the parameters, the colour and the visibility of a bone, the tags of a zone. In the definition: the tags of
// the volumes and the marks of the entity; what other hands have added there is no difference, as a
// definition that is there is never written anew. Kinds: "bone property", "zone property", "volume property",
// "entity property", "missing definition", "missing volume in the definition".
void CompareProperties(const eVerifiedScene& scene, const eSceneModel& model, const eSideNodes& side,
                       const eWrittenModel& written, eFindings& findings);

}  // namespace verify
