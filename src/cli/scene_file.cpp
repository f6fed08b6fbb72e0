#include "cli/scene_file.h"

#include "base/ansi.h"
#include "cli/terminal_text.h"
#include "standalone/loaders/load_scene.h"

namespace cli {

using standalone::eLoadResult;
using standalone::eMessageKind;

eLoadResult ReadScene(const std::string& path, const eSceneFlags& flags, bool quiet) {
    eLoadResult loaded = standalone::LoadScene(path, {flags.fps, FromUtf8(flags.asModel).text,
                                                      flags.texturePaths, !flags.noSplit, flags.properties});
    for (const eToldMessage& message : SceneMessages(path, loaded)) {
        if (message.kind == eMessageKind::Error) {
            TellError(message.text);
        } else if (!quiet) {
            TellWarning(message.text);
        }
    }
    return loaded;
}

std::vector<eToldMessage> SceneMessages(const std::string& path, const eLoadResult& loaded) {
    std::vector<eToldMessage> messages;
    for (const standalone::eProblem& problem : loaded.problems) {
        const std::string place = problem.place.empty() ? "" : problem.place + ": ";
        messages.push_back({eMessageKind::Error, "", path + ": " + place + problem.text});
    }
    for (const std::string& warning : loaded.warnings) {
        messages.push_back({eMessageKind::Warning, "", path + ": " + warning});
    }
    return messages;
}

}  // namespace cli
