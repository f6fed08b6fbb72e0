#pragma once

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// A camera of the file. What has no frame of its own is 4 wide and 3 high; an orthographic camera, which the
// host doesn't have, becomes one with the host's default angle.
eCameraObject MakeGltfCamera(const eGltfImport& import, int camera);

// Gives each camera of the finished scene a target node beside it on its axis, as it stands at frame 0:
// at the "targetDistance" that the extras of the camera, or else of its node, tell, or where the axis comes
// nearest to the centre of the scene. The nodes are no longer depth first afterwards.
void AddGltfCameraTargets(eGltfImport& import);

}  // namespace standalone
