#include "cli/config_folder.h"

#include <cstdlib>

namespace cli {

namespace {

std::string FromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

std::string ConfigFolder(const std::string& given) {
    if (!given.empty()) {
        return given;
    }
    if (const std::string config = FromEnvironment("XDG_CONFIG_HOME"); !config.empty()) {
        return config + "/zyrexport";
    }
    const std::string home = FromEnvironment("HOME");
    return home.empty() ? home : home + "/.config/zyrexport";
}

}  // namespace cli
