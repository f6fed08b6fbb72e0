#include "cli/terminal/terminal_text.h"

#include <cstdio>

#include "base/ansi.h"

namespace cli {

void TellError(const std::string& text) {
    std::fprintf(stderr, "error: %s\n", text.c_str());
}

void TellWarning(const std::string& text) {
    std::fprintf(stderr, "warning: %s\n", text.c_str());
}

void TellFile(platform::eFileAction action, const std::string& path) {
    std::printf("%s %s\n", ActionWord(action), path.c_str());
}

void TellMeshOrder(const eMeshOrder& order) {
    std::printf(
        "mesh %s: %zu triangles, misses of a cache of 24: %.3f -> %.3f a triangle, %.3f -> %.3f a vertex\n",
        ToUtf8(order.mesh).c_str(), order.after.triangles, order.before.MissesPerTriangle(),
        order.after.MissesPerTriangle(), order.before.MissesPerVertex(), order.after.MissesPerVertex());
}

const char* ActionWord(platform::eFileAction action) {
    switch (action) {
        case platform::eFileAction::Written:
            return "written";
        case platform::eFileAction::Copied:
            return "copied";
        case platform::eFileAction::Kept:
            return "kept";
        case platform::eFileAction::Deleted:
            return "deleted";
        case platform::eFileAction::Lost:
            break;
    }
    return "lost";
}

}  // namespace cli
