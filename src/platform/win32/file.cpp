#include "platform/file.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "platform/file_events.h"
#include "platform/native_path.h"
#include "platform/win32/error_status.h"
#include "platform/win32/handle.h"
#include "platform/win32/wide.h"

namespace platform {
namespace {

// The most bytes of one system call.
constexpr std::size_t kLargestPiece = 0x40000000;

HANDLE AsHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

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

}  // namespace

eFile::~eFile() {
    Close();
}

eIoStatus eFile::Open(std::string_view path, eFileAccess access, ePathForm form) {
    Close();
    std::string native;
    const bool writes = access != eFileAccess::Read;
    const eIoStatus found =
        writes ? MakeNativeForWriting(path, form, native) : MakeNative(path, form, native);
    if (!found.IsOk()) {
        return found;
    }
    HANDLE opened = OpenNatively(native, access);
    if (opened == INVALID_HANDLE_VALUE) {
        return StatusOf(false);
    }
    if (form == ePathForm::Resource && !IsResourceFile(opened, native)) {
        ::CloseHandle(opened);
        return StatusFromError(ERROR_ACCESS_DENIED);
    }
    handle = reinterpret_cast<std::intptr_t>(opened);
    return {};
}

eIoStatus eFile::Close() {
    if (!IsOpen()) {
        return {};
    }
    const eIoStatus status = StatusOf(::CloseHandle(AsHandle(handle)));
    handle = closedHandle;
    return status;
}

eIoStatus eFile::Read(void* data, std::size_t count, std::size_t& got) {
    for (got = 0; got < count;) {
        DWORD piece = 0;
        if (!::ReadFile(AsHandle(handle), static_cast<char*>(data) + got, PieceOf(count - got), &piece,
                        nullptr)) {
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

eIoStatus eFile::Write(const void* data, std::size_t count) {
    for (std::size_t done = 0; done < count;) {
        DWORD piece = 0;
        if (!::WriteFile(AsHandle(handle), static_cast<const char*>(data) + done, PieceOf(count - done),
                         &piece, nullptr)) {
            return StatusOf(false);
        }
        if (piece == 0) {
            return StatusFromError(ERROR_DISK_FULL);
        }
        done += piece;
    }
    return {};
}

eIoStatus eFile::Seek(std::int64_t position) {
    LARGE_INTEGER distance;
    distance.QuadPart = position;
    return StatusOf(::SetFilePointerEx(AsHandle(handle), distance, nullptr, FILE_BEGIN));
}

eIoStatus eFile::Truncate(std::int64_t length) {
    if (IsDevice(AsHandle(handle))) {
        return {};
    }
    FILE_END_OF_FILE_INFO end;
    end.EndOfFile.QuadPart = length;
    return StatusOf(::SetFileInformationByHandle(AsHandle(handle), FileEndOfFileInfo, &end, sizeof end));
}

eIoStatus eFile::Length(std::int64_t& length) const {
    length = 0;
    if (IsDevice(AsHandle(handle))) {
        return {};
    }
    LARGE_INTEGER size;
    const eIoStatus status = StatusOf(::GetFileSizeEx(AsHandle(handle), &size));
    length = status.IsOk() ? size.QuadPart : 0;
    return status;
}

eIoStatus eFile::Sync() {
    return IsDevice(AsHandle(handle)) ? eIoStatus{} : StatusOf(::FlushFileBuffers(AsHandle(handle)));
}

eIoStatus RenameOver(std::string_view source, std::string_view target, ePathForm form) {
    std::string nativeSource;
    std::string nativeTarget;
    eIoStatus status = MakeNativeForWriting(source, form, nativeSource);
    if (status.IsOk()) {
        status = MakeNativeForWriting(target, form, nativeTarget);
    }
    if (status.IsOk()) {
        status = StatusOf(::MoveFileExW(WidePath(nativeSource).c_str(), WidePath(nativeTarget).c_str(),
                                        MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
    }
    if (status.IsOk()) {
        TellFileEvent(eFileAction::Written, nativeTarget, ePathForm::Native);
    }
    return status;
}

}  // namespace platform
