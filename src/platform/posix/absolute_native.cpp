#include <unistd.h>

#include <climits>

#include "platform/native_path.h"

namespace platform {
namespace {

std::string CurrentFolder() {
    char folder[PATH_MAX];
    return ::getcwd(folder, sizeof folder) != nullptr ? folder : "";
}

}  // namespace

// Native paths keep their links: only the start is made absolute and empty and "." parts go. ".." is resolved
// in the text, as the fence compares texts.
std::string AbsoluteNative(std::string_view path) {
    std::string result = path.starts_with('/') ? "" : CurrentFolder();
    while (!path.empty()) {
        const std::string_view part = path.substr(0, path.find('/'));
        path.remove_prefix(part.size() < path.size() ? part.size() + 1 : part.size());
        if (part == "..") {
            result = NativeParent(result);
        } else if (!part.empty() && part != ".") {
            result.append("/").append(part);
        }
    }
    return result.empty() ? "/" : result;
}

std::string NativeCaseKey(const std::string& native) {
    return native;
}

}  // namespace platform
