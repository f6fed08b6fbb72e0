#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace standalone {

// The import library puts the faces of an OBJ object whose name came before into the object before it. This
// gives such an object a name of its own: the old one, a mark and a number. Nothing where no name comes
// again.
std::optional<std::string> WithOwnWavefrontNames(std::string_view bytes);

// The name without mark and number.
std::string_view WavefrontNameInFile(std::string_view name);

}  // namespace standalone
