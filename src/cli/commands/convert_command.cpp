#include "cli/commands/convert_command.h"

#include <filesystem>
#include <memory>
#include <string>
#include <variant>

#include "cli/flags/language_flag.h"
#include "cli/run/scene_file.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/native_file.h"
#include "cli/terminal/terminal_text.h"
#include "messages/io_reason.h"
#include "platform/utf8_path.h"
#include "standalone/data/scene_path.h"
#include "standalone/loaders/scene_document/scene_document_writer.h"

namespace cli {

namespace {

// Pictures that the scene file embeds lie in a temporary folder by now; the document needs them beside it.
// False if one can't be kept; the user has been told.
bool KeepEmbeddedPictures(standalone::eSceneData& scene, const std::filesystem::path& document) {
    const std::filesystem::path folder = document.stem().stem().u8string() + u8"_images";
    for (standalone::eMapData& map : scene.maps) {
        auto* bitmap = std::get_if<standalone::eBitmapMap>(&map.kind);
        if (bitmap == nullptr || bitmap->onDisk.empty()) {
            continue;
        }
        const std::filesystem::path source = platform::PathFromUtf8(bitmap->onDisk);
        const std::filesystem::path file = folder / source.filename();
        const std::filesystem::path target = document.parent_path() / file;
        std::error_code error;
        std::filesystem::create_directories(target.parent_path(), error);
        std::filesystem::copy_file(source, target, std::filesystem::copy_options::overwrite_existing, error);
        if (error) {
            TellError(ePhrase::PathNotWrittenFor, platform::Utf8FromPath(target), ReasonWords(error));
            return false;
        }
        bitmap->file = standalone::PathTextOf(platform::Utf8FromPath(file));
    }
    return true;
}

int RunConvert(const std::string& source, const eSceneFlags& flags, const std::string& target) {
    auto scene = ReadScene(source, flags, false).scene;
    if (!scene) {
        return kExitUsage;
    }
    if (!KeepEmbeddedPictures(*scene, platform::PathFromUtf8(target))) {
        return kExitErrors;
    }
    const auto written = standalone::WriteSceneDocument(
        *scene, platform::Utf8FromPath(std::filesystem::absolute(platform::PathFromUtf8(target))));
    for (const standalone::eLoadMessage& warning : written.warnings) {
        TellWarning(warning.Line().At(target));
    }
    const eBilingual problem = WriteNativeFile(target, written.text);
    if (!problem.IsEmpty()) {
        TellError(ePhrase::PathNotWrittenFor, target, problem);
        return kExitErrors;
    }
    return kExitDone;
}

}  // namespace

void AddConvertCommand(CLI::App& program, std::function<int()>& action) {
    struct eArguments {
        std::string source;
        std::string target;
        eSceneFlags sceneFlags;
    };
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("convert", "Write a scene as a scene document");
    command.add_option("SCENE", arguments->source, "Scene document, glTF or FBX file")->required();
    command.add_option("OUT", arguments->target, "The scene document to write, NAME.scene.json")->required();
    AddSceneFlags(command, arguments->sceneFlags);
    AddLanguageFlag(command);
    command.callback([arguments, &action] {
        action = [arguments] {
            return RunConvert(arguments->source, arguments->sceneFlags, arguments->target);
        };
    });
}

}  // namespace cli
