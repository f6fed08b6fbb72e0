#include "cli/terminal/known_names.h"

#include <cstdio>
#include <string>
#include <vector>

#include "base/nearest_name.h"
#include "cli/terminal/terminal_language.h"
#include "messages/utf8_words.h"

namespace cli {

namespace {

std::vector<std::string> CommandsOf(const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

std::vector<std::string> FlagsOf(const CLI::App& command) {
    std::vector<std::string> flags;
    for (const CLI::Option* option : command.get_options()) {
        for (const auto* names : {&option->get_lnames(), &option->get_fnames()}) {
            for (const std::string& name : *names) {
                flags.push_back("--" + name);
            }
        }
    }
    return flags;
}

void TellNearest(const std::string& word, const std::vector<std::string>& known) {
    if (const std::string nearest = NearestName(word, known); !nearest.empty()) {
        const std::string line = Say(TerminalLanguage(), ePhrase::UsageNearest, word, nearest);
        std::fprintf(stderr, "%s\n", line.c_str());
    }
}

}  // namespace

void TellNearestNames(const CLI::App& program) {
    const std::vector<CLI::App*> commands = program.get_subcommands();
    const CLI::App& command = commands.empty() ? program : *commands.front();
    for (const std::string& argument : program.remaining(true)) {
        if (argument.starts_with("--")) {
            TellNearest(argument.substr(0, argument.find('=')), FlagsOf(command));
        } else if (commands.empty()) {
            TellNearest(argument, CommandsOf(program));
            return;  // what follows belongs to the command
        }
    }
}

}  // namespace cli
