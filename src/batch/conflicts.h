// Scenes of a batch that would write over one another.
#pragma once

#include <string>
#include <vector>

#include "batch/scene_list.h"

namespace batch {

// One text, UTF-8, for each folder that several scenes write a model into, by folder, from the lists of
// models in the build folder. Two models of one scene in one folder are for the export to tell. A scene whose
// list is missing has none: it can't be read, and its export tells that.
std::vector<eBilingual> FindConflicts(const std::string& buildFolder, const std::vector<eBatchScene>& scenes);

}  // namespace batch
