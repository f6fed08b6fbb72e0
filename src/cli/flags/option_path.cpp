#include "cli/flags/option_path.h"

#include <filesystem>

#include "base/ansi.h"
#include "platform/drive_table.h"
#include "platform/path_text.h"
#include "platform/utf8_path.h"

namespace cli {

std::optional<std::string> OptionPath(const std::string& typed) {
    eFromUtf8 converted = FromUtf8(typed);
    return converted.IsExact() ? std::optional(std::move(converted.text)) : std::nullopt;
}

std::optional<std::string> FolderOption(const std::string& typed) {
    if (typed.empty() || platform::HasDrive(typed)) {
        return platform::PathTextFromUtf8(typed);
    }
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(platform::PathFromUtf8(typed), error);
    return platform::PathTextFromUtf8(error ? typed : platform::Utf8FromPath(absolute.lexically_normal()));
}

}  // namespace cli
