#pragma once

#include "animation/animation_reader.h"
#include "verify/clip_verdict.h"
#include "verify/scene_clips.h"
#include "verify/verify_mesh.h"

namespace verify {

// Plays the vertices that a clip holds of a mesh animated by frames, and compares where they lie in each
// frame with the scene. Nodes that the clip does not cover stand as they do at the static frame.
void CompareVertices(const eVerifiedScene& scene, const eSceneClip& clip, const eVerifiedMesh& mesh,
                     const eAnimation& written, const eTolerances& tolerances, eClipVerdict& verdict);

}  // namespace verify
