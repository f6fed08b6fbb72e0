#include "platform/user.h"

#include <pwd.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <fstream>

#include "platform/code_page.h"
#include "platform/folder.h"
#include "platform/path_text.h"

namespace platform {
namespace {

// What the numbers of processes count in, behind a dash: machines may share a name, each start of a machine
// and each container counts anew. Empty where the system does not tell.
std::string ReadProcessTable() {
    constexpr std::size_t kBootDigits = 8;
    std::string boot;
    std::ifstream("/proc/sys/kernel/random/boot_id") >> boot;
    std::array<char, 64> name{};
    const ssize_t length = ::readlink("/proc/self/ns/pid", name.data(), name.size());  // "pid:[4026531836]"
    const std::string space(name.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    const std::size_t digits = space.find('[');
    if (boot.size() < kBootDigits || digits == std::string::npos) {
        return {};
    }
    return "-" + boot.substr(0, kBootDigits) + "-" + space.substr(digits + 1, space.find(']') - digits - 1);
}

const std::string& ProcessTable() {
    static const std::string table = ReadProcessTable();
    return table;
}

// The name of a process but for its number.
std::string ProcessFamily() {
    return MachineName() + ProcessTable() + "-";
}

// 0 for what is no number of a process.
pid_t ProcessNumberIn(std::string_view digits) {
    pid_t number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return read.ec == std::errc() && read.ptr == digits.data() + digits.size() && number > 0 ? number : 0;
}

std::string ReadAccountName() {
    constexpr std::size_t longest = 1024;
    const passwd* entry = ::getpwuid(::geteuid());
    const char* name = entry != nullptr ? entry->pw_name : std::getenv("USER");
    const std::optional<std::string> ansi = name != nullptr ? AnsiFromUtf8(name) : std::nullopt;
    return ansi && !ansi->empty() ? ansi->substr(0, longest) : "unknown";
}

}  // namespace

std::string AccountName() {
    static const std::string name = ReadAccountName();
    return name;
}

std::string MachineName() {
    constexpr std::size_t kLongest = 256;
    char name[kLongest] = {};
    return ::gethostname(name, kLongest - 1) == 0 && name[0] != '\0' ? name : "unknown";
}

std::uint32_t ProcessNumber() {
    return static_cast<std::uint32_t>(::getpid());
}

std::string ProcessName() {
    return ProcessFamily() + std::to_string(::getpid());
}

bool EndsInEndedProcess(std::string_view text) {
    const std::size_t digits = text.rfind('-') + 1;
    const pid_t number = ProcessNumberIn(text.substr(digits));
    return number != 0 && !ProcessTable().empty() &&
           text.substr(0, digits).ends_with("." + ProcessFamily()) && ::kill(number, 0) != 0 &&
           errno == ESRCH;
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
