#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standalone {

// The entries of "['open,all,0-30', 'shut,all,30-60']" or "[0.0, 45.0]", as one modelling program writes a
// property that is a list: the format has no place for lists. Nothing for any other text.
struct eFbxListing {
    std::vector<std::string> entries;
    bool areTexts = true;  // not numbers
};
std::optional<eFbxListing> ReadFbxListing(std::string_view text);

}  // namespace standalone
