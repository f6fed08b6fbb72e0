#pragma once

#include <span>
#include <string>
#include <string_view>

namespace answers {

// The keys of node properties that the export reads, or that it knows to be the game's or an older
// exporter's.
std::span<const std::string> PropertyKeys();

// Letter case does not count.
bool IsPropertyKey(std::string_view key);

}  // namespace answers
