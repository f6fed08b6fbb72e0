#pragma once

#include "standalone/loaders/shared/import_report.h"
#include "standalone/scene_data.h"

namespace standalone {

// Tells the skinned meshes whose bones, at the first frame of the scene's range, are not where the mesh was
// bound. An exporter that takes the skeleton of that frame for the pose of the mesh bends it. The properties
// "OldSkin" and "NoSkin" ask for the mesh as it stands there, where nothing bends.
void NoticeBindPoses(const eSceneData& scene, eImportReport& report);

}  // namespace standalone
