#include "platform/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <string>

#include "platform/file_events.h"
#include "platform/native_path.h"
#include "platform/posix/errno_status.h"

namespace platform {
namespace {

int OpenFlags(eFileAccess access) {
    // Not to wait for the other end, should the name turn out to be a pipe.
    constexpr int always = O_CLOEXEC | O_NONBLOCK;
    switch (access) {
        case eFileAccess::Read:
            return always | O_RDONLY;
        case eFileAccess::Write:
            return always | O_RDWR | O_CREAT;
        case eFileAccess::WriteNew:
            return always | O_RDWR | O_CREAT | O_TRUNC;
    }
    return always | O_RDONLY;
}

// A write beyond the file size limit is to fail like one on a full disk, not to end the process.
void TurnSizeLimitIntoError() {
    static const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    static_cast<void>(previous);
}

// A resource is a file with an end: a scene that names a device or a pipe must not make the run read for
// ever.
bool IsResourceFile(int descriptor, const std::string& native) {
    struct stat status;
    return ::fstat(descriptor, &status) == 0 && (S_ISREG(status.st_mode) || IsNullDevice(native));
}

bool IsFolderDescriptor(int descriptor) {
    struct stat status;
    return ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

// The name is replaced and complete whether this succeeds or not; should the power fail before, the old file
// stands there, which is complete too. So there is nothing to tell.
void WriteFolderThrough(const std::string& folder) {
    const int descriptor = ::open(folder.empty() ? "/" : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

}  // namespace

eFile::~eFile() {
    Close();
}

eIoStatus eFile::Open(std::string_view path, eFileAccess access, ePathForm form) {
    Close();
    std::string native;
    const bool writes = access != eFileAccess::Read;
    if (writes) {
        TurnSizeLimitIntoError();
    }
    const eIoStatus found =
        writes ? MakeNativeForWriting(path, form, native) : MakeNative(path, form, native);
    if (!found.IsOk()) {
        return found;
    }
    const int descriptor = ::open(native.c_str(), OpenFlags(access), 0666);
    if (descriptor < 0) {
        return StatusFromErrno(errno);
    }
    const bool refused =
        form == ePathForm::Resource ? !IsResourceFile(descriptor, native) : IsFolderDescriptor(descriptor);
    if (refused) {
        ::close(descriptor);
        return StatusFromErrno(EACCES);
    }
    // Reads from a pipe that the user has named wait for its data.
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    handle = descriptor;
    return {};
}

eIoStatus eFile::Close() {
    if (!IsOpen()) {
        return {};
    }
    // The descriptor is gone even when close reports a signal.
    const int result = ::close(static_cast<int>(handle));
    handle = closedHandle;
    return result == 0 || errno == EINTR ? eIoStatus{} : StatusFromErrno(errno);
}

eIoStatus eFile::Read(void* data, std::size_t count, std::size_t& got) {
    for (got = 0; got < count;) {
        const ssize_t piece = ::read(static_cast<int>(handle), static_cast<char*>(data) + got, count - got);
        if (piece == 0) {
            break;
        }
        if (piece > 0) {
            got += static_cast<std::size_t>(piece);
        } else if (errno != EINTR) {
            return StatusFromErrno(errno);
        }
    }
    return {};
}

eIoStatus eFile::Write(const void* data, std::size_t count) {
    for (std::size_t done = 0; done < count;) {
        const ssize_t piece =
            ::write(static_cast<int>(handle), static_cast<const char*>(data) + done, count - done);
        if (piece > 0) {
            done += static_cast<std::size_t>(piece);
        } else if (piece == 0) {
            return StatusFromErrno(ENOSPC);
        } else if (errno != EINTR) {
            return StatusFromErrno(errno);
        }
    }
    return {};
}

eIoStatus eFile::Seek(std::int64_t position) {
    return ::lseek(static_cast<int>(handle), position, SEEK_SET) >= 0 ? eIoStatus{} : StatusFromErrno(errno);
}

eIoStatus eFile::Truncate(std::int64_t length) {
    return StatusOf(::ftruncate(static_cast<int>(handle), length));
}

eIoStatus eFile::Length(std::int64_t& length) const {
    struct stat status;
    if (::fstat(static_cast<int>(handle), &status) != 0) {
        length = 0;
        return StatusFromErrno(errno);
    }
    length = status.st_size;
    return {};
}

eIoStatus eFile::Sync() {
    // Some file systems know no such request; they write when they want, and nothing has failed.
    const bool done =
        ::fsync(static_cast<int>(handle)) == 0 || errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
    return done ? eIoStatus{} : StatusFromErrno(errno);
}

eIoStatus RenameOver(std::string_view source, std::string_view target, ePathForm form) {
    std::string nativeSource;
    std::string nativeTarget;
    eIoStatus status = MakeNativeForWriting(source, form, nativeSource);
    if (status.IsOk()) {
        status = MakeNativeForWriting(target, form, nativeTarget);
    }
    if (status.IsOk()) {
        status = StatusOf(std::rename(nativeSource.c_str(), nativeTarget.c_str()));
    }
    if (status.IsOk()) {
        WriteFolderThrough(NativeParent(nativeTarget));
        TellFileEvent(eFileAction::Written, nativeTarget, ePathForm::Native);
    }
    return status;
}

}  // namespace platform
