#pragma once

#include "standalone/loaders/fbx/fbx_models.h"
#include "standalone/loaders/fbx/fbx_records.h"
#include "standalone/loaders/fbx/fbx_visibility.h"

namespace standalone {

// Sets eFbxModel::lostMaterials: several nodes may show one geometry, each with materials of its own, and the
// import library shows it with those of one of them everywhere.
void ReadFbxInstances(const eFbxRecord& objects, const eFbxRecord& connections, const eFbxNumbers& numbers,
                      eFbxModels& file);

}  // namespace standalone
