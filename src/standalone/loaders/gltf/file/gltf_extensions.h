#pragma once

#include <optional>
#include <string_view>

#include "messages/phrase.h"

namespace standalone {

// Whether all that the extension says becomes part of the scene, or is told where it is met.
bool IsKnownGltfExtension(std::string_view extension);

// Why a file that requires the extension can't be read, as the end of a sentence; nothing where it can.
// Extensions of materials and pictures change the look at most.
std::optional<ePhrase> ReasonAgainstGltfExtension(std::string_view extension);

// The extension's own place among the extensions of textures: it names a picture of a kind that isn't read.
bool NamesGltfPicture(std::string_view extension);

}  // namespace standalone
