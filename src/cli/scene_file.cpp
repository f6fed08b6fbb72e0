#include "cli/scene_file.h"

#include "base/ansi.h"
#include "cli/terminal_text.h"
#include "standalone/loaders/load_scene.h"

namespace cli {

using standalone::eLoadResult;

eLoadResult ReadScene(const std::string& path, const eSceneFlags& flags, bool quiet) {
    eLoadResult loaded = standalone::LoadScene(path, {flags.fps, FromUtf8(flags.asModel).text,
                                                      flags.texturePaths, !flags.noSplit, flags.properties});
    for (const eToldMessage& message : SceneMessages(path, loaded)) {
        if (message.Severity() == eSeverity::Error) {
            TellError(message.text.english);
        } else if (!quiet) {
            TellWarning(message.text.english);
        }
    }
    return loaded;
}

std::vector<eToldMessage> SceneMessages(const std::string& path, const eLoadResult& loaded) {
    std::vector<eToldMessage> messages;
    const auto add = [&](eMessageId id, const std::string& what) {
        const std::string text = path + ": " + what;
        messages.push_back({.id = id, .place = {.file = path}, .text = {text, text}});
    };
    for (const standalone::eProblem& problem : loaded.problems) {
        const std::string place = problem.place.empty() ? "" : problem.place + ": ";
        add(eMessageId::SceneUnreadable, place + problem.text);
    }
    for (const std::string& warning : loaded.warnings) {
        add(eMessageId::SceneNote, warning);
    }
    return messages;
}

}  // namespace cli
