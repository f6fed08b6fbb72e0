#include "cli/scene_file.h"

#include "base/ansi.h"
#include "cli/terminal_text.h"
#include "standalone/loaders/load_scene.h"

namespace cli {

std::optional<standalone::eSceneData> ReadScene(const std::string& path, const eSceneFlags& flags,
                                                bool quiet) {
    standalone::eLoadResult loaded = standalone::LoadScene(path, {flags.fps, FromUtf8(flags.asModel).text});
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
