#include "cli/flags/config_folder.h"

#include "platform/user.h"

namespace cli {

std::string ConfigFolder(const std::string& given) {
    if (!given.empty()) {
        return given;
    }
    const std::string folder = platform::ConfigFolder();
    return folder.empty() ? folder : folder + "/zyrexport";
}

}  // namespace cli
