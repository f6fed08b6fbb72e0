#pragma once

#include <string>
#include <vector>

namespace cli {

// The whole program: reads the command line (UTF-8, without the program's name), runs the subcommand and
// gives its exit code. Wrong usage is told on standard error.
int RunProgram(std::vector<std::string> arguments);

}  // namespace cli
