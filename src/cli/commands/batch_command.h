#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport batch`.
void AddBatchCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
