#include "cli/commands/options_command.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "cli/flags/config_folder.h"
#include "cli/flags/language_flag.h"
#include "cli/flags/option_path.h"
#include "cli/flags/option_table.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/malformed_name.h"
#include "cli/terminal/terminal_text.h"
#include "export/options_file.h"
#include "platform/utf8_path.h"
#include "run/export.h"
#include "standalone/standalone_host.h"

namespace cli {

namespace {

void ShowOptions(const eExportOptions& options) {
    for (const eOptionField& field : OptionFields()) {
        if (field.isStored) {
            std::printf("%s=%s\n", field.name, OptionText(options, field).c_str());
        }
    }
}

// False if one of the settings is wrong; all of those that are wrong are told.
bool ApplySettings(eExportOptions& options, const std::vector<std::string>& settings) {
    bool isRight = true;
    for (const std::string& setting : settings) {
        const std::size_t equals = setting.find('=');
        const eBilingual problem = equals == std::string::npos ? Utf8Words(ePhrase::OptionForm, setting)
                                                               : SetOption(options, setting.substr(0, equals),
                                                                           setting.substr(equals + 1));
        if (!problem.IsEmpty()) {
            TellError(problem);
            isRight = false;
        }
    }
    return isRight;
}

int RunOptions(const std::string& config, const std::vector<std::string>& settings) {
    const std::string folder = ConfigFolder(config);
    const std::optional<std::string> ansi = FolderOption(folder);
    if (folder.empty() || !ansi) {
        TellError(folder.empty() ? Utf8Words(ePhrase::OptionsNowhere)
                                 : MalformedNameProblem("--config " + folder));
        return kExitUsage;
    }
    standalone::StandaloneHost host{standalone::eSceneData()};
    host.SetConfigFolder(*ansi);
    Export run;
    run.host = &host;
    LoadOptions(run);
    if (settings.empty()) {
        ShowOptions(run.options);
        return kExitDone;
    }
    if (!ApplySettings(run.options, settings)) {
        return kExitUsage;
    }
    std::error_code error;
    std::filesystem::create_directories(platform::PathFromUtf8(folder), error);
    if (!SaveOptions(run)) {
        TellError(ePhrase::OptionsNotKept, folder);
        return kExitErrors;
    }
    ShowOptions(run.options);
    return kExitDone;
}

}  // namespace

void AddOptionsCommand(CLI::App& program, std::function<int()>& action) {
    struct eArguments {
        std::string config;
        std::vector<std::string> settings;
    };
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command = *program.add_subcommand("options", "Show or change the stored options");
    command.add_option("--config", arguments->config, "Folder of the options file")->type_name("DIR");
    command.add_option("KEY=VALUE", arguments->settings, "Options to change");
    AddLanguageFlag(command);
    command.callback([arguments, &action] {
        action = [arguments] { return RunOptions(arguments->config, arguments->settings); };
    });
}

}  // namespace cli
