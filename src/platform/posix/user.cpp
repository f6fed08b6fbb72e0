#include "platform/user.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/code_page.h"

namespace platform {

std::string AccountName() {
    constexpr std::size_t longest = 1024;
    const passwd* entry = ::getpwuid(::geteuid());
    const char* name = entry != nullptr ? entry->pw_name : std::getenv("USER");
    const std::optional<std::string> ansi = name != nullptr ? AnsiFromUtf8(name) : std::nullopt;
    return ansi && !ansi->empty() ? ansi->substr(0, longest) : "unknown";
}

std::optional<std::string> NetworkPath(std::string_view) {
    return std::nullopt;
}

}  // namespace platform
