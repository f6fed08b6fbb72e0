#include "io/streams/stream_file.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <system_error>

#include "base/ansi.h"
#include "base/diagnostics.h"
#include "base/format.h"
#include "io/streams/file_failure.h"
#include "messages/tell.h"
#include "platform/file_events.h"
#include "platform/path_text.h"
#include "platform/same_file.h"

namespace xIo {
namespace {

platform::eFileAccess AccessOf(std::uint32_t flags) {
    if ((flags & streamWrite) == 0) {
        return platform::eFileAccess::Read;
    }
    return (flags & streamTruncate) != 0 ? platform::eFileAccess::WriteNew : platform::eFileAccess::Write;
}

}  // namespace

void AskToRetry(const std::string& name, const platform::eIoStatus& status) {
    Warn(__FILE__, __LINE__, (format("%1%: %2%") % name % status.Text()).Text());
    const platform::eBoxAnswer answer = ShowAs(MakeMessage(eMessageId::FilesOpenFailed, {.file = name}, name),
                                               {.title = "Error writing filestream",
                                                .icon = platform::eBoxIcon::Warning,
                                                .buttons = platform::eBoxButtons::RetryCancel,
                                                .topMost = true});
    if (answer != platform::eBoxAnswer::Retry) {
        Fail(__FILE__, __LINE__, (format("%1% - open error!") % name).Text());
    }
}

eFileStream::~eFileStream() {
    Close();
}

bool eFileStream::Open(const std::string& path, std::uint32_t openFlags, int bufferSize) {
    Close();
    finalPath = path;
    pathForm = platform::ePathForm::Resource;
    return OpenPaths(openFlags, bufferSize);
}

bool eFileStream::OpenNative(const std::string& path, std::uint32_t openFlags, int bufferSize) {
    Close();
    finalPath = platform::PathTextFromUtf8(path).value_or(FromUtf8(path).text);
    diskPath = path;
    pathForm = platform::ePathForm::Native;
    return OpenPaths(openFlags, bufferSize);
}

bool eFileStream::OpenPaths(std::uint32_t openFlags, int bufferSize) {
    flags = openFlags;
    readPastEnd = false;
    size = 0;
    std::int64_t length = 0;
    if (!OpenMedium(length)) {
        flags |= streamOpenFailed;
        SetBuffer(0);
        return false;
    }
    size = static_cast<std::int32_t>(length);
    SetBuffer((flags & streamWrite) != 0 ? bufferSize : std::min(bufferSize, size));
    Fill();
    return true;
}

bool eFileStream::OpenMedium(std::int64_t& length) {
    for (;;) {
        status = TryToOpen(length);
        if (status.IsOk()) {
            mediumPosition = 0;
            return true;
        }
        file.Close();
        if (status.reason == platform::eIoReason::Fenced) {
            TellWriteFailure(finalPath, status);
            return false;
        }
        if ((flags & streamPrompt) == 0) {
            return false;
        }
        AskToRetry(finalPath + OpenSuffix(), status);
    }
}

platform::eIoStatus eFileStream::TryToOpen(std::int64_t& length) {
    const platform::eFileAccess access = AccessOf(flags);
    length = 0;
    const bool isNative = pathForm == platform::ePathForm::Native;
    platform::eIoStatus result;
    if (!isNative) {
        result = platform::FindOnDisk(finalPath, diskPath);
    }
    if (result.IsOk()) {
        result = access == platform::eFileAccess::Read && !isNative
                     ? file.Open(finalPath + OpenSuffix(), access)
                     : file.Open(diskPath + OpenSuffix(), access, platform::ePathForm::Native);
    }
    if (result.IsOk()) {
        result = file.Length(length);
    }
    if (length > std::numeric_limits<std::int32_t>::max()) {
        return {platform::eIoReason::Other, static_cast<int>(std::errc::file_too_large)};
    }
    return result;
}

void eFileStream::SetBuffer(int length) {
    std::free(bufferBegin);
    bufferBegin = nullptr;
    if (length > 0) {
        bufferBegin = static_cast<std::uint8_t*>(std::malloc(static_cast<std::size_t>(length)));
        if (bufferBegin == nullptr) {
            Fail(__FILE__, __LINE__, "out of memory for a stream");
        }
    }
    cursor = bufferBegin;
    bufferEnd = bufferBegin + length;
    bufferBase = 0;
}

bool eFileStream::Close() {
    if (!file.IsOpen()) {
        return status.IsOk();
    }
    const bool writes = (flags & streamWrite) != 0;
    if (writes || (flags & streamDirty) != 0) {
        eFileStream::Flush();  // by name: the destructor closes, too
    }
    if (UsesTemporary() && status.IsOk()) {
        if (platform::HoldsAlready(diskPath, file)) {
            KeepStandingFile();
            return true;
        }
        Remember(file.Sync());
    }
    Remember(file.Close());
    if (status.IsOk()) {
        GiveFinalName();
    } else if (writes) {
        TellWriteFailure(finalPath, status);
    }
    return status.IsOk();
}

void eFileStream::Abandon() {
    if (!file.IsOpen()) {
        return;
    }
    Remember(file.Close());
    if (UsesTemporary()) {
        platform::DiscardFile(diskPath + temporarySuffix, platform::ePathForm::Native);
    }
}

void eFileStream::KeepStandingFile() {
    constexpr platform::ePathForm form = platform::ePathForm::Native;
    file.Close();
    platform::DiscardFile(diskPath + temporarySuffix, form);
    platform::TellFileEvent(platform::eFileAction::Kept, diskPath, form);
}

void eFileStream::GiveFinalName() {
    constexpr platform::ePathForm form = platform::ePathForm::Native;
    if (UsesTemporary()) {
        platform::eIoStatus renamed = platform::RenameOver(diskPath + temporarySuffix, diskPath, form);
        while (!renamed.IsOk()) {
            AskToRetry(finalPath, renamed);
            renamed = platform::RenameOver(diskPath + temporarySuffix, diskPath, form);
        }
    } else if ((flags & streamWrite) != 0) {
        platform::TellFileEvent(platform::eFileAction::Written, diskPath, form);
    }
}

bool eFileStream::UsesTemporary() const {
    const bool writes = (flags & (streamWrite | streamTruncate)) != 0;
    return writes && (flags & streamDirect) == 0 && !platform::IsNullDevice(finalPath);
}

void eFileStream::Flush() {
    const std::ptrdiff_t count = cursor - bufferBegin;
    if (count > 0 && (flags & streamWrite) != 0 && SeekMedium(bufferBase)) {
        Remember(file.Write(bufferBegin, static_cast<std::size_t>(count)));
        mediumPosition += count;
    }
    eStream::Flush();
}

void eFileStream::Truncate() {
    eStream::Truncate();
    Flush();
    if ((flags & streamWrite) != 0 && IsWorking() && !platform::IsNullDevice(finalPath)) {
        Remember(file.Truncate(size));
    }
}

void eFileStream::Fill() {
    const int wanted = std::clamp(size - bufferBase, 0, BufferLength());
    if (wanted == 0) {
        return;
    }
    std::size_t got = 0;
    if (SeekMedium(bufferBase)) {
        Remember(file.Read(bufferBegin, static_cast<std::size_t>(wanted), got));
        mediumPosition += static_cast<std::int64_t>(got);
    }
    // The null device and a file that someone has cut meanwhile give less.
    std::memset(bufferBegin + got, 0, static_cast<std::size_t>(wanted) - got);
}

bool eFileStream::SeekMedium(std::int64_t position) {
    if (IsWorking() && mediumPosition != position) {
        Remember(file.Seek(position));
        mediumPosition = position;
    }
    return IsWorking();
}

void eFileStream::Remember(const platform::eIoStatus& result) {
    if (status.IsOk()) {
        status = result;
    }
}

}  // namespace xIo
