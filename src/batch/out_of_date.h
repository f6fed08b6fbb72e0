#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/scene_list.h"

namespace batch {

// Paths of the scenes that ninja would export now, in its order; nothing if it can't be asked.
std::optional<std::vector<std::string>> OutOfDate(const std::string& buildFolder,
                                                  const std::vector<eBatchScene>& scenes);

}  // namespace batch
