#pragma once

#include <vector>

#include "standalone/loaders/gltf/gltf_timeline.h"

namespace standalone {

// Reads the clips' channels into the curves of the nodes, in the axes of the file.
void ReadGltfCurves(eGltfImport& import, const std::vector<eGltfClip>& clips, double framesPerSecond);

// Gives the nodes of the scene their keys.
void MakeGltfKeys(eGltfImport& import);

}  // namespace standalone
