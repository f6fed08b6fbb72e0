#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport messages [CODE...] [--markdown]`: explains what the exporter tells; all of it as the page
// docs/messages.md.
void AddMessagesCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
