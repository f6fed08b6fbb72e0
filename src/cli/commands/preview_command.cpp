#include "cli/commands/preview_command.h"

#include <memory>
#include <optional>
#include <string>

#include "cli/run/written_glb.h"
#include "cli/terminal/exit_code.h"
#include "cli/terminal/terminal_text.h"
#include "preview/make_page.h"

namespace cli {

namespace {

int RunPreview(const eWrittenModelFlags& flags, const std::string& target) {
    const gltf::eGlbFile glb = ReadWrittenGlb(flags);
    if (glb.content.empty()) {
        return kExitUsage;
    }
    const std::optional<std::string> page = preview::MakePage(glb.content);
    if (!page) {
        TellError(ePhrase::NoPreviewPage);
        return kExitUsage;
    }
    return FinishWrittenModel(glb, target, *page);
}

}  // namespace

void AddPreviewCommand(CLI::App& program, std::function<int()>& action) {
    struct eArguments {
        eWrittenModelFlags flags{};
        std::string target{};
    };
    const auto arguments = std::make_shared<eArguments>();
    CLI::App& command =
        *program.add_subcommand("preview", "Show the written files of a model on a page for a browser");
    AddWrittenModelFlags(command, arguments->flags);
    command.add_option("OUT", arguments->target, "The page to write, NAME.html")->required();
    command.footer(
        "The page holds all that it needs: no network, no other file. Exit status: 0, 1 where OUT can't be\n"
        "written, 2 where there is no model or one of its files is broken.");
    command.callback([arguments, &action] {
        action = [arguments] { return RunPreview(arguments->flags, arguments->target); };
    });
}

}  // namespace cli
