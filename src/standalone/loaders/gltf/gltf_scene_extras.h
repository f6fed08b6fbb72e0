#pragma once

#include <optional>

#include "standalone/loaders/gltf/gltf_timeline.h"

namespace standalone {

// What the extras of the scene say beyond what glTF can: "host.fps", "host.range", "host.ambient",
// "host.metres_per_unit", "host.selection.NAME". A value of another form than expected is a problem.

// Frames a second, where the scene tells them; the rest of the import needs them first.
std::optional<double> ReadGltfFrameRate(const eJsonTree& json, int scene, eImportReport& report);

// Range, ambient light, unit and selection sets; the nodes have their records. Without a range of its own the
// scene has that of its clips.
void ReadGltfSceneExtras(eGltfImport& import, const std::vector<eGltfClip>& clips);

}  // namespace standalone
