#pragma once

namespace cli {

// The whole program: reads the command line, runs the subcommand and gives its exit code. Wrong usage is told
// on standard error.
int RunProgram(int argc, char** argv);

}  // namespace cli
