#pragma once

#include <optional>
#include <vector>

#include "standalone/load_message.h"
#include "standalone/scene_data.h"

namespace standalone {

// What a loader makes of a file. With problems there is no scene: all of them are told in one run and nothing
// is exported. Warnings name what the file holds and the host can't show.
struct eLoadResult {
    std::optional<eSceneData> scene;
    std::vector<eLoadMessage> problems;
    std::vector<eLoadMessage> warnings;
};

}  // namespace standalone
