#pragma once

#include "verify/clip_verdict.h"
#include "verify/scene_clips.h"
#include "verify/verify_mesh.h"
#include "written/played_clip.h"
#include "written/written_model.h"

namespace verify {

// Bends a skinned mesh of the files in some frames of a clip as the engine does, by the skeleton of the model
// text and the poses of the clip, and measures how far its vertices lie from where the scene has them.
// A difference counts as a finding beyond what all bones on the way up may be off, and only where the engine
// has room for all bones of the vertex. Where the skeleton does not stand as the skin was bound, which no
// file and no host tells, the vertices are measured from where the scene's own bones would move them instead.
void CompareBentSkin(const eVerifiedScene& scene, const eSceneModel& model, const eSceneClip& clip,
                     const eVerifiedMesh& mesh, const eWrittenModel& skeleton, const ePlayedClip& played,
                     const eTolerances& tolerances, eClipVerdict& verdict);

}  // namespace verify
