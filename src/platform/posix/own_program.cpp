#include "platform/own_program.h"

#include <filesystem>
#include <system_error>

namespace platform {

std::string OwnProgram() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).string();
}

}  // namespace platform
