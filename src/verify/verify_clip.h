#pragma once

#include "verify/clip_verdict.h"
#include "verify/scene_clips.h"
#include "written/played_clip.h"

namespace verify {

// Plays the written clip as the engine does, each value carried forward from the frame that last stored it,
// and compares every bone in every frame with the scene.
void ComparePoses(const eVerifiedScene& scene, const eSceneModel& model, const eSceneClip& clip,
                  const ePlayedClip& played, const eTolerances& tolerances, eClipVerdict& verdict);

}  // namespace verify
