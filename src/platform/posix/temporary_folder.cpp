#include "platform/temporary_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "platform/posix/errno_status.h"

namespace platform {
namespace {

std::string TemporaryRoot() {
    const char* root = std::getenv("TMPDIR");
    return root != nullptr && root[0] == '/' ? root : "/tmp";
}

eIoStatus WriteAll(int file, std::span<const std::uint8_t> content) {
    while (!content.empty()) {
        const ssize_t written = ::write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return StatusFromErrno(errno);
        }
        content = content.subspan(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return {};
}

}  // namespace

eIoStatus eTemporaryFolder::Make(std::shared_ptr<eTemporaryFolder>& folder) {
    constexpr int kAttempts = 10000;
    constexpr mode_t kOnlyTheUser = 0700;
    const std::string start = TemporaryRoot() + "/zyrexport_" + std::to_string(::getpid()) + "_";
    folder = nullptr;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::string path = start + std::to_string(attempt);
        if (::mkdir(path.c_str(), kOnlyTheUser) == 0) {
            folder.reset(new eTemporaryFolder(path));
            return {};
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return StatusFromErrno(errno);
}

eTemporaryFolder::~eTemporaryFolder() {
    for (const std::string& file : files) {
        ::unlink(file.c_str());
    }
    ::rmdir(path.c_str());
}

eIoStatus eTemporaryFolder::Write(const std::string& name, std::span<const std::uint8_t> content) {
    constexpr mode_t kUserReadsAndWrites = 0600;
    const std::string file = path + "/" + name;
    const int handle = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kUserReadsAndWrites);
    if (handle < 0) {
        return StatusFromErrno(errno);
    }
    files.push_back(file);
    const eIoStatus status = WriteAll(handle, content);
    const int closed = ::close(handle);
    return status.IsOk() && closed != 0 ? StatusFromErrno(errno) : status;
}

}  // namespace platform
