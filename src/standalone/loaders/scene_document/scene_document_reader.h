#pragma once

#include <string>
#include <string_view>

#include "standalone/load_result.h"

namespace standalone {

// Reads a scene document and holds it against the whole grammar. Problems come in the order of the document,
// all of one run, each with the JSON path; a text that is no JSON gives the one place where it breaks.
// `path` is the document's absolute path, UTF-8: the scene's `file` where the document names none.
// Takes time in proportion to the text.
eLoadResult ReadSceneDocument(std::string_view text, const std::string& path);

}  // namespace standalone
