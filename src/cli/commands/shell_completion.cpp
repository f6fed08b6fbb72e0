#include "cli/commands/shell_completion.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace cli {

namespace {

enum class eTakes { Nothing, Folder, File, Word };

struct eFlag {
    std::string name;  // without the dashes
    std::string help;
    eTakes takes = eTakes::Nothing;
};

eTakes TakenBy(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const auto begins = [&](std::string_view word) { return type.starts_with(word); };
    return option.get_items_expected_max() == 0                                   ? eTakes::Nothing
           : begins("DIR")                                                        ? eTakes::Folder
           : begins("FILE") || begins("OUT") || begins("PATH") || begins("SCENE") ? eTakes::File
                                                                                  : eTakes::Word;
}

std::vector<eFlag> FlagsOf(const CLI::App& command) {
    std::vector<eFlag> flags;
    for (const CLI::Option* option : command.get_options()) {
        const eTakes takes = TakenBy(*option);
        for (const std::string& name : option->get_lnames()) {
            flags.push_back({name, option->get_description(), takes});
        }
    }
    return flags;
}

std::vector<const CLI::App*> CommandsOf(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App* command) { return !command->get_name().empty(); });
}

// The flags of a kind as the shell has them, parted by `between`.
std::string Joined(const std::vector<eFlag>& flags, std::string_view between, auto&& isWanted) {
    std::string joined;
    for (const eFlag& flag : flags) {
        if (isWanted(flag)) {
            joined += (joined.empty() ? "--" : std::string(between) + "--") + flag.name;
        }
    }
    return joined;
}

std::string BashCase(const std::vector<eFlag>& flags, eTakes takes, std::string_view answer) {
    const std::string names = Joined(flags, "|", [takes](const eFlag& flag) { return flag.takes == takes; });
    return names.empty() ? "" : "        " + names + ") " + std::string(answer) + "; return ;;\n";
}

std::string BashCommand(const CLI::App& command) {
    const std::vector<eFlag> flags = FlagsOf(command);
    return "    " + command.get_name() + ")\n      case $before in\n" +
           BashCase(flags, eTakes::Folder, "_zyrexport_paths -d") +
           BashCase(flags, eTakes::File, "_zyrexport_paths -f") +
           BashCase(flags, eTakes::Word, "COMPREPLY=()") + "      esac\n      flags='" +
           Joined(flags, " ", [](const eFlag&) { return true; }) + "' ;;\n";
}

// In single quotes of a POSIX shell.
std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

// A colon ends a part of what zsh reads, a bracket the help.
std::string ZshText(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == ':' || c == '[' || c == ']') {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

std::string ZshFlag(const eFlag& flag) {
    const char* const value = flag.takes == eTakes::Folder ? ":folder:_files -/"
                              : flag.takes == eTakes::File ? ":file:_files"
                              : flag.takes == eTakes::Word ? ":value:"
                                                           : "";
    return Quoted("*--" + flag.name + "[" + ZshText(flag.help) + "]" + value);
}

}  // namespace

std::string BashCompletion(const CLI::App& program) {
    std::string names, cases;
    for (const CLI::App* command : CommandsOf(program)) {
        names += (names.empty() ? "" : " ") + command->get_name();
        cases += BashCommand(*command);
    }
    return R"(_zyrexport_paths() {
  compopt -o filenames
  mapfile -t COMPREPLY < <(compgen "$1" -- "${COMP_WORDS[COMP_CWORD]}")
}

_zyrexport() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} flags=
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W ')" +
           names + R"( --help --version' -- "$word")
    return
  fi
  case ${COMP_WORDS[1]} in
)" + cases +
           R"(  esac
  case $word in
    -*) mapfile -t COMPREPLY < <(compgen -W "$flags" -- "$word") ;;
    *) _zyrexport_paths -f ;;
  esac
}
complete -F _zyrexport zyrexport
)";
}

std::string ZshCompletion(const CLI::App& program) {
    std::string commands, cases;
    for (const CLI::App* command : CommandsOf(program)) {
        commands += "    " + Quoted(command->get_name() + ":" + ZshText(command->get_description())) + "\n";
        cases += "    " + command->get_name() + ")\n      _arguments";
        for (const eFlag& flag : FlagsOf(*command)) {
            cases += " \\\n        " + ZshFlag(flag);
        }
        cases += " \\\n        '*:file:_files' ;;\n";
    }
    return R"(#compdef zyrexport
_zyrexport() {
  local -a commands=(
)" + commands +
           R"(  )
  if (( CURRENT == 2 )); then
    _describe command commands
    return
  fi
  local command=$words[2]
  shift words
  (( CURRENT-- ))
  case $command in
)" + cases +
           R"(  esac
}
_zyrexport "$@"
)";
}

std::string FishCompletion(const CLI::App& program) {
    std::string text;
    for (const CLI::App* command : CommandsOf(program)) {
        text += "complete -c zyrexport -n __fish_use_subcommand -f -a " + command->get_name() + " -d " +
                Quoted(command->get_description()) + "\n";
        for (const eFlag& flag : FlagsOf(*command)) {
            const char* const value = flag.takes == eTakes::Folder ? " -x -a '(__fish_complete_directories)'"
                                      : flag.takes == eTakes::File ? " -r"
                                      : flag.takes == eTakes::Word ? " -x"
                                                                   : "";
            text += "complete -c zyrexport -n '__fish_seen_subcommand_from " + command->get_name() + "' -l " +
                    flag.name + value + " -d " + Quoted(flag.help) + "\n";
        }
    }
    return text;
}

}  // namespace cli
