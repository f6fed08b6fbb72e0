#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace cli {

// `zyrexport preview MODEL OUT.html`: the written files of a model as a page for a browser.
void AddPreviewCommand(CLI::App& program, std::function<int()>& action);

}  // namespace cli
