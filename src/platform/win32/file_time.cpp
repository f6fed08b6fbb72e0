#include "platform/file_time.h"

#include <windows.h>

#include <string>

#include "platform/native_path.h"
#include "platform/win32/error_status.h"
#include "platform/win32/handle.h"
#include "platform/win32/wide.h"

namespace platform {
namespace {

// The system counts 100 nanoseconds from the year 1601 on.
constexpr std::int64_t kNanosecondsPerTick = 100;
constexpr std::int64_t kTicksUntil1970 = 116'444'736'000'000'000;

std::int64_t Nanoseconds(const FILETIME& time) {
    ULARGE_INTEGER ticks;
    ticks.LowPart = time.dwLowDateTime;
    ticks.HighPart = time.dwHighDateTime;
    return (static_cast<std::int64_t>(ticks.QuadPart) - kTicksUntil1970) * kNanosecondsPerTick;
}

}  // namespace

std::optional<std::int64_t> LastWriteTime(std::string_view path, ePathForm form) {
    std::string native;
    if (!MakeNative(path, form, native).IsOk()) {
        return std::nullopt;
    }
    const eHandle file(::CreateFileW(WidePath(native).c_str(), GENERIC_READ, kShareAll, nullptr,
                                     OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    FILETIME time;
    if (!file.IsOpen() || !::GetFileTime(file.Get(), nullptr, nullptr, &time)) {
        return std::nullopt;
    }
    return Nanoseconds(time);
}

eIoStatus SetLastWriteTimeToNow(std::string_view path) {
    std::string native;
    const eIoStatus found = MakeNativeForWriting(path, ePathForm::Resource, native);
    if (!found.IsOk()) {
        return found;
    }
    const eHandle file(::CreateFileW(WidePath(native).c_str(), FILE_WRITE_ATTRIBUTES, kShareAll, nullptr,
                                     OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file.IsOpen()) {
        return StatusOf(false);
    }
    FILETIME now;
    ::GetSystemTimeAsFileTime(&now);
    return StatusOf(::SetFileTime(file.Get(), nullptr, nullptr, &now));
}

}  // namespace platform
