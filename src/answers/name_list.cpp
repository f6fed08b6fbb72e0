#include "answers/name_list.h"

#include <algorithm>

#include "base/ansi.h"
#include "messages/utf8_words.h"

namespace answers {

eBilingual NameList(std::vector<std::string> names, const eBilingual& forEmpty) {
    constexpr std::size_t kShown = 3;
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    eBilingual list;
    for (std::size_t index = 0; index < std::min(names.size(), kShown); ++index) {
        const std::string name = ToUtf8(names[index]);
        list.AddToList(name.empty() ? forEmpty : eBilingual{name, name});
    }
    if (names.size() > kShown) {
        list += Utf8Words(ePhrase::AndMore, names.size() - kShown);
    }
    return list;
}

}  // namespace answers
