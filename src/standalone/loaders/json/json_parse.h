#pragma once

#include <optional>
#include <string_view>

#include "standalone/load_result.h"
#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// Reads a JSON text (UTF-8, with or without byte order mark) into the tree. What is no JSON gives the first
// place that isn't, by line, column and byte. Takes time and memory in proportion to the text; nesting of any
// depth needs no stack.
std::optional<eLoadMessage> ParseJson(std::string_view text, eJsonTree& tree);

}  // namespace standalone
