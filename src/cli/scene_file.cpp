#include "cli/scene_file.h"

#include "cli/terminal_text.h"
#include "standalone/loaders/load_scene.h"

namespace cli {

std::optional<standalone::eSceneData> ReadScene(const std::string& path, bool quiet) {
    standalone::eLoadResult loaded = standalone::LoadScene(path);
    for (const standalone::eProblem& problem : loaded.problems) {
        TellError(path + ": " + (problem.place.empty() ? "" : problem.place + ": ") + problem.text);
    }
    if (!quiet) {
        for (const std::string& warning : loaded.warnings) {
            TellWarning(path + ": " + warning);
        }
    }
    return std::move(loaded.scene);
}

}  // namespace cli
