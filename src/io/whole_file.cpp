#include "io/whole_file.h"

#include <vector>

#include "io/file_failure.h"
#include "io/temporary_name.h"
#include "platform/file.h"
#include "platform/file_events.h"

namespace xIo {
namespace {

// Brings the content of an open .tmp file to disk and gives it the final name.
platform::eIoStatus Complete(platform::eFile& file, const std::string& path) {
    platform::eIoStatus status = file.Sync();
    const platform::eIoStatus closed = file.Close();
    status = status.IsOk() ? closed : status;
    return status.IsOk() ? platform::RenameOver(path + temporarySuffix, path) : status;
}

struct eCopyStatus {
    platform::eIoStatus read;
    platform::eIoStatus write;

    bool IsOk() const { return read.IsOk() && write.IsOk(); }
};

eCopyStatus CopyContent(platform::eFile& from, platform::eFile& to) {
    constexpr std::size_t pieceSize = 256 * 1024;
    std::vector<std::uint8_t> piece(pieceSize);
    eCopyStatus status;
    for (std::size_t got = pieceSize; status.IsOk() && got == pieceSize;) {
        status.read = from.Read(piece.data(), pieceSize, got);
        if (status.read.IsOk()) {
            status.write = to.Write(piece.data(), got);
        }
    }
    return status;
}

eCopyStatus Copy(const std::string& source, const std::string& target) {
    platform::eFile from;
    platform::eFile to;
    eCopyStatus status;
    status.read = from.Open(source, platform::eFileAccess::Read);
    if (status.read.IsOk()) {
        status.write = to.Open(target + temporarySuffix, platform::eFileAccess::WriteNew);
    }
    if (status.IsOk()) {
        status = CopyContent(from, to);
    }
    if (status.IsOk()) {
        status.write = Complete(to, target);
    }
    return status;
}

}  // namespace

bool WriteWholeFile(const std::string& path, std::span<const std::uint8_t> content) {
    platform::eFile file;
    platform::eIoStatus status = file.Open(path + temporarySuffix, platform::eFileAccess::WriteNew);
    if (status.IsOk()) {
        status = file.Write(content.data(), content.size());
    }
    if (status.IsOk()) {
        status = Complete(file, path);
    }
    if (!status.IsOk()) {
        TellWriteFailure(path, status);
    }
    return status.IsOk();
}

bool CopyWholeFile(const std::string& source, const std::string& target) {
    const eCopyStatus status = Copy(source, target);
    if (!status.read.IsOk()) {
        TellReadFailure(source, status.read);
    } else if (!status.write.IsOk()) {
        TellWriteFailure(target, status.write);
    } else {
        platform::TellFileEvent(platform::eFileAction::Copied, target);
    }
    return status.IsOk();
}

}  // namespace xIo
