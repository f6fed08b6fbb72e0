#include "standalone/data/scene_path.h"

#include "base/ansi.h"
#include "platform/path_text.h"

namespace standalone {

std::string PathTextOf(const std::string& utf8) {
    return platform::PathTextFromUtf8(utf8).value_or(FromUtf8(utf8).text);
}

}  // namespace standalone
