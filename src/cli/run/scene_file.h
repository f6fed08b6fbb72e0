#pragma once

#include <string>
#include <vector>

#include "cli/flags/scene_flags.h"
#include "cli/run/run_record.h"
#include "standalone/load_result.h"

namespace cli {

// Reads a scene of any known format and tells what is wrong with it; warnings only where not
// quiet. The result has no scene if it can't be read.
standalone::eLoadResult ReadScene(const std::string& path, const eSceneFlags& flags, bool quiet);

// What ReadScene tells of a scene, for the report.
std::vector<eToldMessage> SceneMessages(const std::string& path, const standalone::eLoadResult& loaded);

}  // namespace cli
