#include "answers/name_list.h"

#include <algorithm>

#include "base/ansi.h"

namespace answers {

std::string NameList(std::vector<std::string> names, const char* forEmpty) {
    constexpr std::size_t kShown = 3;
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    std::string text;
    for (std::size_t index = 0; index < std::min(names.size(), kShown); ++index) {
        text += index > 0 ? ", " : "";
        text += names[index].empty() ? forEmpty : ToUtf8(names[index]);
    }
    return names.size() > kShown ? text + " and " + std::to_string(names.size() - kShown) + " more" : text;
}

}  // namespace answers
