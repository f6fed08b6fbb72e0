#include "answers/content_mark.h"

#include "base/sha256.h"
#include "platform/file_layer.h"

namespace answers {

std::optional<eContentMark> MarkOf(const std::string& native) {
    platform::eFileContent content;
    if (!platform::ReadWhole(platform::DiskLayer(), native, content).IsOk()) {
        return std::nullopt;
    }
    return eContentMark{content.size(), Sha256Hex(content)};
}

}  // namespace answers
