#include "cli/run/batch_summary.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli/terminal/exit_code.h"
#include "cli/terminal/native_file.h"
#include "cli/terminal/terminal_text.h"
#include "platform/terminal.h"

namespace cli {

namespace {

// False if it can't be written, which is told.
bool Keep(const std::string& file, const std::string& text) {
    const eBilingual problem = WriteNativeFile(file, text);
    if (!problem.IsEmpty()) {
        TellError(problem.At(file));
    }
    return problem.IsEmpty();
}

int ExitCode(const std::vector<batch::eSceneResult>& results, int buildStatus, bool isKept) {
    if (platform::WasInterrupted() || buildStatus == kExitCancelled) {
        return kExitCancelled;
    }
    if (buildStatus != 0) {
        return kExitFatal;
    }
    const bool hasErrors = std::ranges::any_of(
        results, [](const batch::eSceneResult& result) { return result.exitCode != kExitDone; });
    return hasErrors || !isKept ? kExitErrors : kExitDone;
}

}  // namespace

int TellBatch(const std::string& buildFolder, const std::string& report,
              const std::vector<batch::eSceneResult>& results, int buildStatus) {
    std::printf("%s", batch::ResultText(results, TerminalLanguage()).c_str());
    std::fflush(stdout);
    constexpr int kIndent = 2;
    const std::string text = batch::ResultJson(results).dump(
                                 kIndent, ' ', false, nlohmann::ordered_json::error_handler_t::replace) +
                             "\n";
    const bool isKept = Keep(buildFolder + "/summary.json", text);
    const bool isReported = report.empty() || Keep(report, text);
    return ExitCode(results, buildStatus, isKept && isReported);
}

}  // namespace cli
