#include "cli/terminal/version.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace cli {

namespace {

std::string Line(const char* what, const std::string& text) {
    return text.empty() ? std::string() : std::string("\n") + what + ": " + text;
}

std::string Dotted(int major, int minor, int patch) {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

}  // namespace

std::string VersionText() {
    return std::string("zyrexport ") + kVersion + Line("commit", kCommit) + Line("compiler", ZYR_COMPILER) +
           Line("build", ZYR_BUILD) + ZYR_LIBRARIES +
           Line("nlohmann json", Dotted(NLOHMANN_JSON_VERSION_MAJOR, NLOHMANN_JSON_VERSION_MINOR,
                                        NLOHMANN_JSON_VERSION_PATCH)) +
           Line("cli11", CLI11_VERSION);
}

}  // namespace cli
