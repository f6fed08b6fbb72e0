#include "platform/async_file.h"

#include <windows.h>

#include <string>
#include <utility>

#include "platform/native_path.h"
#include "platform/win32/error_status.h"
#include "platform/win32/handle.h"
#include "platform/win32/wide.h"

namespace platform {

struct eAsyncFile::eRequest {
    HANDLE file = INVALID_HANDLE_VALUE;
    OVERLAPPED overlapped{};
    bool isUnderWay = false;
    bool beganAtEnd = false;  // the system has refused it, as nothing is left to read

    void Close() {
        if (file != INVALID_HANDLE_VALUE) {
            ::CloseHandle(std::exchange(file, INVALID_HANDLE_VALUE));
        }
    }
};

eAsyncFile::eAsyncFile() : request(std::make_unique<eRequest>()) {}

eAsyncFile::~eAsyncFile() {
    Cancel();
    request->Close();
}

eIoStatus eAsyncFile::Open(std::string_view path) {
    Cancel();
    request->Close();
    std::string native;
    const eIoStatus found = MakeNative(path, ePathForm::Resource, native);
    if (!found.IsOk()) {
        return found;
    }
    request->file = ::CreateFileW(WidePath(native).c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_FLAG_OVERLAPPED | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    LARGE_INTEGER size;
    if (request->file == INVALID_HANDLE_VALUE || !::GetFileSizeEx(request->file, &size)) {
        const eIoStatus status = StatusOf(false);
        request->Close();
        return status;
    }
    length = size.QuadPart;
    return {};
}

eIoStatus eAsyncFile::Start(std::int64_t position, void* data, std::size_t count) {
    Cancel();
    LARGE_INTEGER offset;
    offset.QuadPart = position;
    request->overlapped = {};
    request->overlapped.Offset = offset.LowPart;
    request->overlapped.OffsetHigh = static_cast<DWORD>(offset.HighPart);
    const BOOL ended =
        ::ReadFile(request->file, data, static_cast<DWORD>(count), nullptr, &request->overlapped);
    const DWORD error = ended ? ERROR_SUCCESS : ::GetLastError();
    request->beganAtEnd = error == ERROR_HANDLE_EOF;
    request->isUnderWay = error == ERROR_SUCCESS || error == ERROR_IO_PENDING || request->beganAtEnd;
    return request->isUnderWay ? eIoStatus{} : StatusFromError(error);
}

eIoStatus eAsyncFile::Wait(std::size_t& got) {
    got = 0;
    if (!request->isUnderWay) {
        return StatusFromError(ERROR_INVALID_PARAMETER);
    }
    request->isUnderWay = false;
    if (request->beganAtEnd) {
        return {};
    }
    DWORD count = 0;
    constexpr BOOL kWait = TRUE;
    if (!::GetOverlappedResult(request->file, &request->overlapped, &count, kWait)) {
        return ::GetLastError() == ERROR_HANDLE_EOF ? eIoStatus{} : StatusOf(false);
    }
    got = count;
    return {};
}

void eAsyncFile::Cancel() {
    if (!request->isUnderWay) {
        return;
    }
    // The system may still write to the data until the read has told its end.
    ::CancelIo(request->file);
    std::size_t ignored = 0;
    Wait(ignored);
}

}  // namespace platform
