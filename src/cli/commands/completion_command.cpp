#include "cli/commands/completion_command.h"

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include "cli/commands/shell_completion.h"
#include "cli/terminal/exit_code.h"

namespace cli {

void AddCompletionCommand(CLI::App& program, std::function<int()>& action) {
    using eCompletion = std::string (*)(const CLI::App&);
    static const std::map<std::string, eCompletion> kShells = {
        {"bash", BashCompletion}, {"fish", FishCompletion}, {"zsh", ZshCompletion}};
    const auto shell = std::make_shared<std::string>();
    CLI::App& command = *program.add_subcommand("completion", "Print the completion for a shell");
    command.add_option("SHELL", *shell, "bash, fish or zsh")->required()->check(CLI::IsMember(kShells));
    command.footer("For bash, for example, put  source <(zyrexport completion bash)  into ~/.bashrc.");
    command.callback([shell, &program, &action] {
        action = [shell, &program] {
            std::fputs(kShells.at(*shell)(program).c_str(), stdout);
            return kExitDone;
        };
    });
}

}  // namespace cli
