#pragma once

#include <string_view>

namespace standalone {

// True for what begins as a JSON object and is no glTF file: whether it keeps to the grammar, or breaks off,
// is for the reader of scene documents to say. Looks at the keys of the outermost object only.
bool LooksLikeSceneDocument(std::string_view text);

}  // namespace standalone
