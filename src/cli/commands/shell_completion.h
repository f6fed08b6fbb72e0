#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace cli {

// Text for a shell's start-up files that completes the program's subcommands, flags and paths; read from the
// program's own tables, so that it holds whatever they hold. What a flag takes is told by the name of its
// value: DIR is completed with folders, FILE, OUT, PATH and SCENE with files, any other not at all.
std::string BashCompletion(const CLI::App& program);
std::string ZshCompletion(const CLI::App& program);
std::string FishCompletion(const CLI::App& program);

}  // namespace cli
