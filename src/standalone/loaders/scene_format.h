#pragma once

#include <string_view>

namespace standalone {

// The last three are Collada (.dae), Wavefront (.obj) and 3D Studio (.3ds).
enum class eSceneFormat { Unknown, Document, Gltf, Fbx, Collada, Wavefront, Studio };

// The format that a file begins as: whether it keeps to the grammar, or breaks off, is for its reader to say.
// Looks at the first bytes, at the keys of the outermost object of a JSON text, and at the first lines of
// other texts.
eSceneFormat SceneFormatOf(std::string_view bytes);

}  // namespace standalone
