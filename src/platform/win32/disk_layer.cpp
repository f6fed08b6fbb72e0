#include <windows.h>

#include <algorithm>
#include <vector>

#include "platform/file_events.h"
#include "platform/file_layer.h"
#include "platform/native_path.h"
#include "platform/path_lookup.h"
#include "platform/win32/error_status.h"
#include "platform/win32/folder_names.h"
#include "platform/win32/handle.h"
#include "platform/win32/wide.h"

namespace platform {
namespace {

// The most bytes of one system call.
constexpr std::size_t kLargestPiece = 0x40000000;

DWORD PieceOf(std::size_t count) {
    return static_cast<DWORD>(std::min(count, kLargestPiece));
}

HANDLE OpenNatively(const std::string& native, eFileAccess access) {
    const DWORD rights = access == eFileAccess::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    const DWORD creation = access == eFileAccess::Read    ? OPEN_EXISTING
                           : access == eFileAccess::Write ? OPEN_ALWAYS
                                                          : CREATE_ALWAYS;
    return ::CreateFileW(WidePath(native).c_str(), rights, kShareAll, nullptr, creation,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

// A resource is a file with an end: a scene that names a device must not make the run read for ever.
bool IsResourceFile(HANDLE handle, const std::string& native) {
    return ::GetFileType(handle) == FILE_TYPE_DISK || IsNullDevice(native);
}

// A device such as the null device: it has no length and nothing to write through.
bool IsDevice(HANDLE handle) {
    return ::GetFileType(handle) == FILE_TYPE_CHAR;
}

// The system counts 100 nanoseconds from the year 1601 on.
constexpr std::int64_t kNanosecondsPerTick = 100;
constexpr std::int64_t kTicksUntil1970 = 116'444'736'000'000'000;

std::int64_t Nanoseconds(const FILETIME& time) {
    ULARGE_INTEGER ticks;
    ticks.LowPart = time.dwLowDateTime;
    ticks.HighPart = time.dwHighDateTime;
    return (static_cast<std::int64_t>(ticks.QuadPart) - kTicksUntil1970) * kNanosecondsPerTick;
}

// Links are removed, not followed.
eIoStatus RemoveNatively(const std::string& native, DWORD attributes) {
    const std::wstring path = WidePath(native);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        const eIoStatus status = StatusOf(::DeleteFileW(path.c_str()));
        if (status.IsOk()) {
            TellFileEvent(eFileAction::Deleted, native, ePathForm::Native);
        }
        return status;
    }
    std::vector<eFoundName> names;
    const bool isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    eIoStatus status = isLink ? eIoStatus{} : ListNames(native, names);
    for (std::size_t index = 0; status.IsOk() && index < names.size(); ++index) {
        status = RemoveNatively(NativeJoin(native, Utf8FromWide(names[index].name)), names[index].attributes);
    }
    return status.IsOk() ? StatusOf(::RemoveDirectoryW(path.c_str())) : status;
}

class eDiskFile : public eOpenFile {
public:
    explicit eDiskFile(HANDLE systemHandle) : handle(systemHandle) {}
    ~eDiskFile() override { eDiskFile::Close(); }
    eDiskFile(const eDiskFile&) = delete;
    eDiskFile& operator=(const eDiskFile&) = delete;

    eIoStatus Close() override;
    eIoStatus Read(void* data, std::size_t count, std::size_t& got) override;
    eIoStatus Write(const void* data, std::size_t count) override;
    eIoStatus Seek(std::int64_t position) override;
    eIoStatus Truncate(std::int64_t length) override;
    eIoStatus Length(std::int64_t& length) const override;
    eIoStatus Sync() override;

private:
    HANDLE handle;  // INVALID_HANDLE_VALUE once closed
};

eIoStatus eDiskFile::Close() {
    if (handle == INVALID_HANDLE_VALUE) {
        return {};
    }
    const eIoStatus status = StatusOf(::CloseHandle(handle));
    handle = INVALID_HANDLE_VALUE;
    return status;
}

eIoStatus eDiskFile::Read(void* data, std::size_t count, std::size_t& got) {
    for (got = 0; got < count;) {
        DWORD piece = 0;
        if (!::ReadFile(handle, static_cast<char*>(data) + got, PieceOf(count - got), &piece, nullptr)) {
            // The writer of a pipe has gone: that is its end.
            const bool isEnd = ::GetLastError() == ERROR_BROKEN_PIPE || ::GetLastError() == ERROR_HANDLE_EOF;
            return isEnd ? eIoStatus{} : StatusOf(false);
        }
        if (piece == 0) {
            break;
        }
        got += piece;
    }
    return {};
}

eIoStatus eDiskFile::Write(const void* data, std::size_t count) {
    for (std::size_t done = 0; done < count;) {
        DWORD piece = 0;
        if (!::WriteFile(handle, static_cast<const char*>(data) + done, PieceOf(count - done), &piece,
                         nullptr)) {
            return StatusOf(false);
        }
        if (piece == 0) {
            return StatusFromError(ERROR_DISK_FULL);
        }
        done += piece;
    }
    return {};
}

eIoStatus eDiskFile::Seek(std::int64_t position) {
    LARGE_INTEGER distance;
    distance.QuadPart = position;
    return StatusOf(::SetFilePointerEx(handle, distance, nullptr, FILE_BEGIN));
}

eIoStatus eDiskFile::Truncate(std::int64_t length) {
    if (IsDevice(handle)) {
        return {};
    }
    FILE_END_OF_FILE_INFO end;
    end.EndOfFile.QuadPart = length;
    return StatusOf(::SetFileInformationByHandle(handle, FileEndOfFileInfo, &end, sizeof end));
}

eIoStatus eDiskFile::Length(std::int64_t& length) const {
    length = 0;
    if (IsDevice(handle)) {
        return {};
    }
    LARGE_INTEGER size;
    const eIoStatus status = StatusOf(::GetFileSizeEx(handle, &size));
    length = status.IsOk() ? size.QuadPart : 0;
    return status;
}

eIoStatus eDiskFile::Sync() {
    return IsDevice(handle) ? eIoStatus{} : StatusOf(::FlushFileBuffers(handle));
}

class eDiskLayer : public eFileLayer {
public:
    bool IsLasting() const override { return true; }
    eIoStatus Open(const std::string& native, eFileAccess access, ePathForm form,
                   std::unique_ptr<eOpenFile>& file) override;
    std::vector<eIoStatus> SyncContents(const std::vector<std::string>& natives) override;
    // The system brings each rename to the disk by itself.
    void SyncNames(const std::vector<std::string>&) override {}
    eIoStatus Rename(const std::string& source, const std::string& target) override;
    eIoStatus MakeFolder(const std::string& native) override;
    eIoStatus Remove(const std::string& native) override;
    eIoStatus Discard(const std::string& native) override {
        return StatusOf(::DeleteFileW(WidePath(native).c_str()));
    }
    eIoStatus Touch(const std::string& native) override;
    eEntryKind KindOf(const std::string& native) const override;
    std::optional<std::int64_t> LastWriteTime(const std::string& native) const override;
    // Only a try tells what the rights to a folder allow here.
    eIoStatus CheckFolder(const std::string&) const override { return {}; }
};

eIoStatus eDiskLayer::Open(const std::string& native, eFileAccess access, ePathForm form,
                           std::unique_ptr<eOpenFile>& file) {
    HANDLE opened = OpenNatively(native, access);
    if (opened == INVALID_HANDLE_VALUE) {
        return StatusOf(false);
    }
    if (form == ePathForm::Resource && !IsResourceFile(opened, native)) {
        ::CloseHandle(opened);
        return StatusFromError(ERROR_ACCESS_DENIED);
    }
    file = std::make_unique<eDiskFile>(opened);
    return {};
}

std::vector<eIoStatus> eDiskLayer::SyncContents(const std::vector<std::string>& natives) {
    std::vector<eIoStatus> results;
    for (const std::string& native : natives) {
        HANDLE opened = ::CreateFileW(WidePath(native).c_str(), GENERIC_WRITE, kShareAll, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        results.push_back(opened != INVALID_HANDLE_VALUE ? eDiskFile(opened).Sync() : StatusOf(false));
    }
    return results;
}

eIoStatus eDiskLayer::Rename(const std::string& source, const std::string& target) {
    return StatusOf(::MoveFileExW(WidePath(source).c_str(), WidePath(target).c_str(),
                                  MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

eIoStatus eDiskLayer::MakeFolder(const std::string& native) {
    if (KindOf(native) != eEntryKind::None) {
        // The system denies to make the top of a drive instead of telling that it is there.
        return StatusFromError(ERROR_ALREADY_EXISTS);
    }
    return StatusOf(::CreateDirectoryW(WidePath(native).c_str(), nullptr));
}

eIoStatus eDiskLayer::Remove(const std::string& native) {
    const DWORD attributes = ::GetFileAttributesW(WidePath(native).c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ? StatusOf(false) : RemoveNatively(native, attributes);
}

// What a link leads to may lie anywhere.
eIoStatus eDiskLayer::Touch(const std::string& native) {
    constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    const DWORD attributes = ::GetFileAttributesW(WidePath(native).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & kNoFile) != 0) {
        return StatusFromError(ERROR_ACCESS_DENIED);
    }
    const eHandle file(::CreateFileW(WidePath(native).c_str(), FILE_WRITE_ATTRIBUTES, kShareAll, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    FILETIME now;
    ::GetSystemTimeAsFileTime(&now);
    return StatusOf(file.IsOpen() && ::SetFileTime(file.Get(), nullptr, nullptr, &now));
}

eEntryKind eDiskLayer::KindOf(const std::string& native) const {
    const DWORD attributes = ::GetFileAttributesW(WidePath(native).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return eEntryKind::None;
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? eEntryKind::Folder : eEntryKind::File;
}

std::optional<std::int64_t> eDiskLayer::LastWriteTime(const std::string& native) const {
    const eHandle file(::CreateFileW(WidePath(native).c_str(), GENERIC_READ, kShareAll, nullptr,
                                     OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    FILETIME time;
    if (!file.IsOpen() || !::GetFileTime(file.Get(), nullptr, nullptr, &time)) {
        return std::nullopt;
    }
    return Nanoseconds(time);
}

}  // namespace

eFileLayer& DiskLayer() {
    static eDiskLayer layer;
    return layer;
}

}  // namespace platform
