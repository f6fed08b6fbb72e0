#pragma once

#include <optional>
#include <string>
#include <vector>

#include "standalone/scene_data.h"

namespace standalone {

// Something wrong with a scene file: where (a JSON path, or a byte offset in words; empty for the file as a
// whole) and what. UTF-8.
struct eProblem {
    std::string place;
    std::string text;
};

// What a loader makes of a file. With problems there is no scene: all of them are told in one run and nothing
// is exported. Warnings name what the file holds and the host can't show.
struct eLoadResult {
    std::optional<eSceneData> scene;
    std::vector<eProblem> problems;
    std::vector<std::string> warnings;  // UTF-8
};

}  // namespace standalone
