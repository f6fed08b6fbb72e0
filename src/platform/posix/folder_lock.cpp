#include "platform/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/known_folders.h"

namespace platform {

namespace {

// What another user has left can be locked all the same, but for a shared folder of old kind.
int OpenLockFile(const std::string& path) {
    constexpr mode_t kForAll = 0666;
    constexpr int always = O_CLOEXEC | O_NOFOLLOW;
    const int descriptor = ::open(path.c_str(), always | O_RDWR | O_CREAT, kForAll);
    return descriptor < 0 && errno == EACCES ? ::open(path.c_str(), always | O_RDONLY) : descriptor;
}

// False if its holder has taken it away between our opening and locking it.
bool StandsAt(const std::string& path, int descriptor) {
    struct stat named {};
    struct stat opened {};
    return ::stat(path.c_str(), &named) == 0 && ::fstat(descriptor, &opened) == 0 &&
           named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

// Only for people: a lock without its owner's name locks as well.
void WriteOwner(int descriptor, const std::string& owner) {
    static_cast<void>(::ftruncate(descriptor, 0) == 0 &&
                      ::write(descriptor, owner.data(), owner.size()) >= 0);
}

}  // namespace

// Over a shared folder (NFS from Linux 2.6.12 on, SMB) the server keeps the lock, for all machines.
eLockAnswer TakeLockFile(const std::string& path, const std::string& owner, std::intptr_t& file) {
    for (;;) {
        const int descriptor = OpenLockFile(path);
        if (descriptor < 0) {
            return eLockAnswer::None;
        }
        if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
            const bool isInUse = errno == EWOULDBLOCK;
            ::close(descriptor);
            return isInUse ? eLockAnswer::InUse : eLockAnswer::None;
        }
        if (StandsAt(path, descriptor)) {
            WriteOwner(descriptor, owner);
            NoteMade(path);
            file = descriptor;
            return eLockAnswer::Held;
        }
        ::close(descriptor);
    }
}

void ReleaseLockFile(const std::string& path, std::intptr_t file) {
    ::unlink(path.c_str());
    NoteGone(path);
    ::close(static_cast<int>(file));
}

}  // namespace platform
