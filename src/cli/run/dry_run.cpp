#include "cli/run/dry_run.h"

#include <filesystem>

#include "platform/utf8_path.h"

namespace cli {

// In the root, which has few names and keeps them: each path below is sought in vain, name by name.
std::string NoFolder() {
    return platform::Utf8FromPath(std::filesystem::temp_directory_path().root_path() / "zyrexport-no-folder");
}

}  // namespace cli
