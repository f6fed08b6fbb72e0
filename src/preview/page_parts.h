#pragma once

#include <string_view>
#include <vector>

namespace preview {

// The page in front of the model and behind it, in pieces; page/bundle.mjs makes them.
extern const std::vector<std::string_view> kPageBeforeModel;
extern const std::vector<std::string_view> kPageBehindModel;

}  // namespace preview
