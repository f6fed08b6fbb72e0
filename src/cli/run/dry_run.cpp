#include "cli/run/dry_run.h"

#include <filesystem>

#include "platform/utf8_path.h"

namespace cli {

std::string NoFolder() {
    return platform::Utf8FromPath(std::filesystem::temp_directory_path() / "zyrexport-no-folder");
}

}  // namespace cli
