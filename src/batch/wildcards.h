#pragma once

#include <string_view>

namespace batch {

// True if the text holds a wildcard.
bool HasWildcards(std::string_view text);

// True if the path is one that the pattern stands for: `?` is any letter but a slash, `*` any number of them,
// `**/` any number of folders, none too. Costs at worst the product of both lengths for each `*`.
bool MatchesPattern(std::string_view path, std::string_view pattern);

}  // namespace batch
