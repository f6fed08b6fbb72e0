#pragma once

#include <CLI/CLI.hpp>

namespace cli {

// After a call that was refused: tells for each unknown subcommand and flag in it the nearest known one, a
// line on standard error each. Says nothing of a word that resembles none.
void TellNearestNames(const CLI::App& program);

}  // namespace cli
