#include "platform/posix/disk_flush.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "platform/posix/errno_status.h"

namespace platform {
namespace {

constexpr unsigned long kUnknownKib = std::numeric_limits<std::uint32_t>::max() / 2;

class eReadFile {
public:
    // Empty is the top of all folders, as NativeParent tells it.
    explicit eReadFile(const std::string& native)
        : descriptor(::open(native.empty() ? "/" : native.c_str(), O_RDONLY | O_CLOEXEC)),
          status(StatusOf(descriptor < 0)) {}
    eReadFile(const eReadFile&) = delete;
    eReadFile& operator=(const eReadFile&) = delete;
    ~eReadFile() {
        if (status.IsOk()) {
            ::close(descriptor);
        }
    }

    int Descriptor() const { return descriptor; }
    const eIoStatus& Status() const { return status; }

private:
    const int descriptor;
    const eIoStatus status;
};

// File systems whose syncfs leaves nothing in the disk's own memory. Those that a program serves need not
// hear of it, and others may be served by one.
bool IsFlushedWhole(int descriptor) {
    constexpr unsigned long kXfsMagic = 0x58465342;  // <linux/magic.h> lacks it
    struct statfs about;
    if (::fstatfs(descriptor, &about) != 0) {
        return false;
    }
    const auto kind = static_cast<unsigned long>(about.f_type);
    return kind == EXT4_SUPER_MAGIC || kind == BTRFS_SUPER_MAGIC || kind == kXfsMagic;
}

// The number behind the key of a line; more than any if it is not there.
unsigned long NumberBehind(std::string_view key, const char* text) {
    const std::size_t at = std::string_view(text).find(key);
    return at != std::string_view::npos ? std::strtoul(text + at + key.size(), nullptr, 10) : kUnknownKib;
}

// What all programs have written and the disks have not got yet, in KiB.
unsigned long UnwrittenKib() {
    std::array<char, 0x1000> text{};  // ends in a zero; the list is shorter
    const eReadFile list("/proc/meminfo");
    const bool isRead = ::read(list.Descriptor(), text.data(), text.size() - 1) > 0;
    return isRead ? NumberBehind("Dirty:", text.data()) + NumberBehind("Writeback:", text.data())
                  : kUnknownKib;
}

// Files of one run lie on one file system, nearly always. To flush one by itself takes the time of 256 KiB
// that another program has left unwritten.
bool AreFlushedTogether(const std::vector<std::string>& natives) {
    constexpr std::size_t kMany = 3;
    constexpr unsigned long kKibPerFile = 256;
    return natives.size() >= kMany && UnwrittenKib() <= kKibPerFile * natives.size() &&
           IsFlushedWhole(eReadFile(natives.front()).Descriptor());
}

class eTogether {
public:
    // Once its file system is flushed, only what went wrong with this file is asked.
    eIoStatus Flush(int descriptor) {
        return IsDone(descriptor) ? StatusOf(::sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WAIT_BEFORE))
                                  : FlushOpenFile(descriptor);
    }

private:
    bool IsDone(int descriptor) {
        struct stat file;
        if (::fstat(descriptor, &file) != 0) {
            return false;
        }
        const bool isDone = std::ranges::find(done, file.st_dev) != done.end();
        if (isDone || !IsFlushedWhole(descriptor) || ::syncfs(descriptor) != 0) {
            return isDone;
        }
        done.push_back(file.st_dev);
        return true;
    }

    std::vector<dev_t> done;  // the file systems
};

// All are on their way before the first is waited for.
void StartAll(const std::vector<std::string>& natives) {
    for (const std::string& native : natives) {
        ::sync_file_range(eReadFile(native).Descriptor(), 0, 0, SYNC_FILE_RANGE_WRITE);
    }
}

template <class Flush>
std::vector<eIoStatus> FlushEach(const std::vector<std::string>& natives, Flush flush) {
    std::vector<eIoStatus> results;
    for (const std::string& native : natives) {
        const eReadFile file(native);
        results.push_back(file.Status().IsOk() ? flush(file.Descriptor()) : file.Status());
    }
    return results;
}

}  // namespace

eIoStatus FlushOpenFile(int descriptor) {
    const bool done = ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
    return done ? eIoStatus{} : StatusFromErrno(errno);
}

std::vector<eIoStatus> FlushFiles(const std::vector<std::string>& natives) {
    if (AreFlushedTogether(natives)) {
        return FlushEach(natives,
                         [together = eTogether()](int file) mutable { return together.Flush(file); });
    }
    if (natives.size() > 1) {
        StartAll(natives);
    }
    return FlushEach(natives, FlushOpenFile);
}

}  // namespace platform
