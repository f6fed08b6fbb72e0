// A page that shows a model in any browser, by itself: page/ holds its script, style and text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace preview {

// The page with the .glb in it. Nothing in a program that was built without the page's script, for which the
// build needs node and npm.
std::optional<std::string> MakePage(std::string_view glb);

}  // namespace preview
