#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <vector>

#include "platform/file_events.h"
#include "platform/file_layer.h"
#include "platform/native_path.h"
#include "platform/path_lookup.h"
#include "platform/posix/disk_flush.h"
#include "platform/posix/errno_status.h"
#include "platform/posix/folder_names.h"
#include "platform/posix/known_folders.h"

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

// The kind of what stands behind a descriptor; 0 if nobody knows.
mode_t ModeOf(int descriptor) {
    struct stat status;
    return ::fstat(descriptor, &status) == 0 ? status.st_mode : 0;
}

// A resource is a file with an end: a scene that names a device or a pipe must not make the run read for
// ever.
bool IsRefused(mode_t mode, const std::string& native, ePathForm form) {
    return form == ePathForm::Resource ? !S_ISREG(mode) && !IsNullDevice(native) : S_ISDIR(mode);
}

bool IsNativeFolder(const std::string& native) {
    struct stat status;
    return ::lstat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

eIoStatus DiscardNatively(const std::string& native) {
    const eIoStatus status = StatusOf(::unlink(native.c_str()));
    if (status.IsOk()) {
        NoteGone(native);
    }
    return status;
}

eIoStatus RemoveFileNatively(const std::string& native) {
    const eIoStatus status = DiscardNatively(native);
    if (status.IsOk()) {
        TellFileEvent(eFileAction::Deleted, native, ePathForm::Native);
    }
    return status;
}

eIoStatus RemoveNatively(const std::string& native) {
    if (!IsNativeFolder(native)) {
        return RemoveFileNatively(native);
    }
    std::vector<std::string> names;
    eIoStatus status = ListNames(native, names);
    for (std::size_t index = 0; status.IsOk() && index < names.size(); ++index) {
        status = RemoveNatively(NativeJoin(native, names[index]));
    }
    return status.IsOk() ? StatusOf(::rmdir(native.c_str())) : status;
}

class eDiskFile : public eOpenFile {
public:
    explicit eDiskFile(int fileDescriptor) : descriptor(fileDescriptor) {}
    ~eDiskFile() override { eDiskFile::Close(); }
    eDiskFile(const eDiskFile&) = delete;
    eDiskFile& operator=(const eDiskFile&) = delete;

    eIoStatus Close() override;
    eIoStatus Read(void* data, std::size_t count, std::size_t& got) override;
    eIoStatus Write(const void* data, std::size_t count) override;
    eIoStatus Seek(std::int64_t position) override;
    eIoStatus Truncate(std::int64_t length) override;
    eIoStatus Length(std::int64_t& length) const override;
    eIoStatus Sync() override { return FlushOpenFile(descriptor); }
    void StartSync() override;

private:
    static constexpr int closedDescriptor = -1;
    int descriptor;
    std::size_t written = 0;  // in bytes
};

eIoStatus eDiskFile::Close() {
    if (descriptor == closedDescriptor) {
        return {};
    }
    // The descriptor is gone even when close reports a signal.
    const int result = ::close(descriptor);
    descriptor = closedDescriptor;
    return result == 0 || errno == EINTR ? eIoStatus{} : StatusFromErrno(errno);
}

eIoStatus eDiskFile::Read(void* data, std::size_t count, std::size_t& got) {
    for (got = 0; got < count;) {
        const ssize_t piece = ::read(descriptor, static_cast<char*>(data) + got, count - got);
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

eIoStatus eDiskFile::Write(const void* data, std::size_t count) {
    for (std::size_t done = 0; done < count;) {
        const ssize_t piece = ::write(descriptor, static_cast<const char*>(data) + done, count - done);
        if (piece > 0) {
            done += static_cast<std::size_t>(piece);
        } else if (piece == 0) {
            return StatusFromErrno(ENOSPC);
        } else if (errno != EINTR) {
            return StatusFromErrno(errno);
        }
    }
    written += count;
    return {};
}

eIoStatus eDiskFile::Seek(std::int64_t position) {
    return ::lseek(descriptor, position, SEEK_SET) >= 0 ? eIoStatus{} : StatusFromErrno(errno);
}

eIoStatus eDiskFile::Truncate(std::int64_t length) {
    return StatusOf(::ftruncate(descriptor, length));
}

eIoStatus eDiskFile::Length(std::int64_t& length) const {
    struct stat status;
    if (::fstat(descriptor, &status) != 0) {
        length = 0;
        return StatusFromErrno(errno);
    }
    length = status.st_size;
    return {};
}

// Each start costs a call of the disk, which small files share at the end (FlushFiles).
void eDiskFile::StartSync() {
    constexpr std::size_t kWorthIt = 0x40000;
    if (written >= kWorthIt) {
        ::sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
    }
}

class eDiskLayer : public eFileLayer {
public:
    bool IsLasting() const override { return true; }
    eIoStatus Open(const std::string& native, eFileAccess access, ePathForm form,
                   std::unique_ptr<eOpenFile>& file) override;
    std::vector<eIoStatus> SyncContents(const std::vector<std::string>& natives) override {
        return FlushFiles(natives);
    }
    void SyncNames(const std::vector<std::string>& folders) override { FlushFiles(folders); }
    eIoStatus Rename(const std::string& source, const std::string& target) override;
    eIoStatus MakeFolder(const std::string& native) override;
    eIoStatus Remove(const std::string& native) override { return RemoveNatively(native); }
    eIoStatus Discard(const std::string& native) override { return DiscardNatively(native); }
    eIoStatus Touch(const std::string& native) override;
    eEntryKind KindOf(const std::string& native) const override;
    std::optional<std::int64_t> LastWriteTime(const std::string& native) const override;
    eIoStatus CheckFolder(const std::string& native) const override {
        // With the slash a file is told as no folder.
        return StatusOf(::access((native + "/").c_str(), W_OK | X_OK));
    }
};

eIoStatus eDiskLayer::Open(const std::string& native, eFileAccess access, ePathForm form,
                           std::unique_ptr<eOpenFile>& file) {
    if (access != eFileAccess::Read) {
        TurnSizeLimitIntoError();
    }
    const int descriptor = ::open(native.c_str(), OpenFlags(access), 0666);
    if (descriptor < 0) {
        return StatusFromErrno(errno);
    }
    const mode_t mode = ModeOf(descriptor);
    if (IsRefused(mode, native, form)) {
        ::close(descriptor);
        return StatusFromErrno(EACCES);
    }
    // Reads from a pipe that the user has named wait for its data. To a file it is all the same.
    if (!S_ISREG(mode)) {
        ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    }
    file = std::make_unique<eDiskFile>(descriptor);
    if (access != eFileAccess::Read) {
        NoteMade(native);
    }
    return {};
}

eIoStatus eDiskLayer::Rename(const std::string& source, const std::string& target) {
    const eIoStatus status = StatusOf(std::rename(source.c_str(), target.c_str()));
    if (status.IsOk()) {
        NoteGone(source);
        NoteMade(target);
    }
    return status;
}

eIoStatus eDiskLayer::MakeFolder(const std::string& native) {
    const eIoStatus status = StatusOf(::mkdir(native.c_str(), 0777));
    if (status.IsOk()) {
        NoteFolderMade(native);
    }
    return status;
}

// What a link leads to may lie anywhere.
eIoStatus eDiskLayer::Touch(const std::string& native) {
    struct stat status;
    if (::lstat(native.c_str(), &status) != 0) {
        return StatusFromErrno(errno);
    }
    return S_ISREG(status.st_mode)
               ? StatusOf(::utimensat(AT_FDCWD, native.c_str(), nullptr, AT_SYMLINK_NOFOLLOW))
               : StatusFromErrno(EACCES);
}

eEntryKind eDiskLayer::KindOf(const std::string& native) const {
    struct stat status;
    if (::stat(native.c_str(), &status) != 0) {
        return eEntryKind::None;
    }
    return S_ISDIR(status.st_mode) ? eEntryKind::Folder : eEntryKind::File;
}

std::optional<std::int64_t> eDiskLayer::LastWriteTime(const std::string& native) const {
    struct stat status;
    if (::stat(native.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

}  // namespace

eFileLayer& DiskLayer() {
    static eDiskLayer layer;
    return layer;
}

}  // namespace platform
