#pragma once

#include <string_view>

namespace standalone {

enum class eSceneFormat { Unknown, Document, Gltf };

// The format that a file begins as: whether it keeps to the grammar, or breaks off, is for its reader to say.
// Looks at the first bytes, and at the keys of the outermost object of a JSON text.
eSceneFormat SceneFormatOf(std::string_view bytes);

}  // namespace standalone
