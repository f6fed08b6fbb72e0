#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

namespace cli {

// How to understand a scene that doesn't say it itself. Texts are UTF-8.
struct eSceneFlags {
    std::string asModel;
    std::optional<double> fps;
    std::vector<std::string> texturePaths;
    bool noSplit = false;
    std::string properties;
};

// Adds `--as-model PATH`, `--fps N`, `--texture-path DIR`,
// `--no-split` and `--properties FILE`.
std::vector<CLI::Option*> AddSceneFlags(CLI::App& command, eSceneFlags& flags);

}  // namespace cli
