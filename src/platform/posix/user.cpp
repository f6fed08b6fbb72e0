#include "platform/user.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/code_page.h"
#include "platform/folder.h"
#include "platform/path_text.h"

namespace platform {

std::string AccountName() {
    constexpr std::size_t longest = 1024;
    const passwd* entry = ::getpwuid(::geteuid());
    const char* name = entry != nullptr ? entry->pw_name : std::getenv("USER");
    const std::optional<std::string> ansi = name != nullptr ? AnsiFromUtf8(name) : std::nullopt;
    return ansi && !ansi->empty() ? ansi->substr(0, longest) : "unknown";
}

std::string MachineName() {
    constexpr std::size_t kLongest = 256;
    char name[kLongest] = {};
    return ::gethostname(name, kLongest - 1) == 0 && name[0] != '\0' ? name : "unknown";
}

std::uint32_t ProcessNumber() {
    return static_cast<std::uint32_t>(::getpid());
}

std::optional<std::string> NetworkPath(std::string_view) {
    return std::nullopt;
}

std::string UserLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* locale = std::getenv(name);
        if (locale != nullptr && locale[0] != '\0') {
            return std::string(locale).substr(0, 2);
        }
    }
    return {};
}

std::string ConfigFolder() {
    const char* config = std::getenv("XDG_CONFIG_HOME");
    if (config != nullptr && config[0] != '\0') {
        return config;
    }
    const char* home = std::getenv("HOME");
    return home != nullptr && home[0] != '\0' ? std::string(home) + "/.config" : std::string();
}

std::string DocumentsFolder() {
    const char* documents = std::getenv("XDG_DOCUMENTS_DIR");
    const char* home = std::getenv("HOME");
    if (documents == nullptr && home == nullptr) {
        return {};
    }
    const std::string folder = documents != nullptr ? documents : std::string(home) + "/Documents";
    MakeFolder(folder, ePathForm::Native);
    return PathTextFromUtf8(folder).value_or(std::string());
}

}  // namespace platform
