#include "io/streams/whole_file.h"

#include <vector>

#include "io/streams/file_failure.h"
#include "io/streams/temporary_name.h"
#include "platform/file.h"
#include "platform/file_events.h"
#include "platform/file_time.h"
#include "platform/same_file.h"
#include "platform/user.h"

namespace xIo {
namespace {

constexpr platform::ePathForm native = platform::ePathForm::Native;

// A file under its .tmp name, on the way to its final one. One that does not get there is removed.
class eNewFile {
public:
    explicit eNewFile(eSharing sharing) : suffix(SuffixFor(sharing)) {}
    eNewFile(const eNewFile&) = delete;
    eNewFile& operator=(const eNewFile&) = delete;
    ~eNewFile() {
        if (isPending) {
            file.Close();
            platform::DiscardFile(TemporaryPath(), native);
        }
    }

    platform::eIoStatus Find(const std::string& path) { return platform::FindOnDisk(path, diskPath); }

    // True if the file that stands there has the content and has got the present time: nothing is left to do.
    // One whose time may not be set is written anew.
    template <class Content>
    bool Renew(Content& content) const {
        const bool isRenewed =
            platform::HoldsAlready(diskPath, content) && platform::TouchFile(diskPath, native).IsOk();
        if (isRenewed) {
            platform::TellFileEvent(platform::eFileAction::Written, diskPath, native);
        }
        return isRenewed;
    }

    platform::eIoStatus Open() {
        const platform::eIoStatus status =
            file.Open(TemporaryPath(), platform::eFileAccess::WriteNew, native);
        isPending = status.IsOk();
        return status;
    }
    platform::eIoStatus Write(const void* data, std::size_t count) { return file.Write(data, count); }

    // Brings the content to disk and gives the file its final name.
    platform::eIoStatus Complete() {
        platform::eIoStatus status = file.Sync();
        const platform::eIoStatus closed = file.Close();
        if (status.IsOk()) {
            status = closed;
        }
        if (status.IsOk()) {
            status = platform::RenameOver(TemporaryPath(), diskPath, native);
            isPending = !status.IsOk();
        }
        return status;
    }
    const std::string& DiskPath() const { return diskPath; }

private:
    static std::string SuffixFor(eSharing sharing) {
        return (sharing == eSharing::Own ? std::string() : "." + platform::ProcessName()) + temporarySuffix;
    }
    std::string TemporaryPath() const { return diskPath + suffix; }

    const std::string suffix;
    platform::eFile file;
    std::string diskPath;
    bool isPending = false;
};

struct eCopyStatus {
    platform::eIoStatus read;
    platform::eIoStatus write;

    bool IsOk() const { return read.IsOk() && write.IsOk(); }
};

eCopyStatus CopyContent(platform::eFile& from, eNewFile& to) {
    constexpr std::size_t pieceSize = 0x40000;
    std::vector<std::uint8_t> piece(pieceSize);
    eCopyStatus status{.read = from.Seek(0), .write = {}};
    for (std::size_t got = pieceSize; status.IsOk() && got == pieceSize;) {
        status.read = from.Read(piece.data(), pieceSize, got);
        if (status.read.IsOk()) {
            status.write = to.Write(piece.data(), got);
        }
    }
    return status;
}

eCopyStatus Copy(const std::string& source, eNewFile& to, const std::string& target) {
    platform::eFile from;
    eCopyStatus status;
    status.read = from.Open(source, platform::eFileAccess::Read);
    if (status.read.IsOk()) {
        status.write = to.Find(target);
    }
    if (!status.IsOk() || to.Renew(from)) {
        return status;
    }
    status.write = to.Open();
    if (status.IsOk()) {
        status = CopyContent(from, to);
    }
    // It may be the source that is replaced, which Windows refuses for an open file.
    from.Close();
    if (status.IsOk()) {
        status.write = to.Complete();
    }
    return status;
}

platform::eIoStatus Store(const std::string& path, std::span<const std::uint8_t> content, eSharing sharing) {
    eNewFile file(sharing);
    platform::eIoStatus status = file.Find(path);
    if (!status.IsOk() || file.Renew(content)) {
        return status;
    }
    status = file.Open();
    if (status.IsOk()) {
        status = file.Write(content.data(), content.size());
    }
    if (status.IsOk()) {
        status = file.Complete();
    }
    return status;
}

}  // namespace

platform::eIoStatus StoreWholeFile(const std::string& path, std::span<const std::uint8_t> content) {
    return Store(path, content, eSharing::Own);
}

bool WriteWholeFile(const std::string& path, std::span<const std::uint8_t> content,
                    const eMessagePlace& owner, eSharing sharing) {
    const platform::eIoStatus status = Store(path, content, sharing);
    if (!status.IsOk()) {
        TellWriteFailure(path, status, owner);
    }
    return status.IsOk();
}

bool CopyWholeFile(const std::string& source, const std::string& target, const eMessagePlace& owner,
                   eSharing sharing) {
    eNewFile copy(sharing);
    const eCopyStatus status = Copy(source, copy, target);
    if (!status.read.IsOk()) {
        TellReadFailure(source, status.read, owner);
    } else if (!status.write.IsOk()) {
        TellWriteFailure(target, status.write, owner);
    } else {
        platform::TellFileEvent(platform::eFileAction::Copied, copy.DiskPath(), native);
    }
    return status.IsOk();
}

}  // namespace xIo
