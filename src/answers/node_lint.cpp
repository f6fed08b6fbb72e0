#include "answers/node_lint.h"

#include <algorithm>

#include "scene/properties/text_words.h"

namespace answers {

std::vector<ePropertyLine> PropertyLines(std::string_view buffer) {
    std::vector<ePropertyLine> lines;
    while (!buffer.empty()) {
        const std::string_view line = buffer.substr(0, buffer.find_first_of("\r\n;"));
        buffer.remove_prefix(std::min(buffer.size(), line.size() + 1));
        const std::size_t sign = std::min(line.find('='), line.size());
        const std::string_view key = TrimBlanks(line.substr(0, sign));
        const std::string_view value = TrimBlanks(line.substr(std::min(sign + 1, line.size())));
        if (!key.empty() || !value.empty()) {
            lines.push_back({key, value, sign < line.size()});
        }
    }
    return lines;
}

}  // namespace answers
