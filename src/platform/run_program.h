// Other programs.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

// Runs a program, found like one that is typed, with the words as its arguments (the first is its name), in a
// folder (native), and waits for its end; it shares the terminal of this one. Its exit status, or 128 and the
// signal that ended it; nothing if it can't be started.
std::optional<int> RunProgram(const std::vector<std::string>& words, const std::string& folder);

}  // namespace platform
