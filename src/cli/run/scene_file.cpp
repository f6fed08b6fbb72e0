#include "cli/run/scene_file.h"

#include "base/ansi.h"
#include "cli/terminal/terminal_text.h"
#include "standalone/loaders/load_scene.h"

namespace cli {

using standalone::eLoadResult;

eLoadResult ReadScene(const std::string& path, const eSceneFlags& flags, bool quiet) {
    eLoadResult loaded = standalone::LoadScene(path, {flags.fps, FromUtf8(flags.asModel).text,
                                                      flags.texturePaths, !flags.noSplit, flags.properties});
    for (const eToldMessage& message : SceneMessages(path, loaded)) {
        if (message.Severity() == eSeverity::Error) {
            TellError(message.text);
        } else if (!quiet) {
            TellWarning(message.text);
        }
    }
    return loaded;
}

std::vector<eToldMessage> SceneMessages(const std::string& path, const eLoadResult& loaded) {
    std::vector<eToldMessage> messages;
    for (const auto* list : {&loaded.problems, &loaded.warnings}) {
        for (const standalone::eLoadMessage& told : *list) {
            messages.push_back(
                {.id = told.id, .place = {.node = told.node, .file = path}, .text = told.Line().At(path)});
        }
    }
    return messages;
}

}  // namespace cli
