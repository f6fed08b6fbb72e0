#pragma once

#include <optional>
#include <string>

#include "cli/scene_flags.h"
#include "standalone/scene_data.h"

namespace cli {

// Loads the scene and tells on standard error what is wrong with it, and what the file holds and the host
// can't show. Nothing if it can't be used.
std::optional<standalone::eSceneData> ReadScene(const std::string& path, const eSceneFlags& flags,
                                                bool quiet);

}  // namespace cli
