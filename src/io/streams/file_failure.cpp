#include "io/streams/file_failure.h"

#include "messages/phrase.h"
#include "messages/tell.h"

namespace xIo {
namespace {

eBilingual ReasonOf(const platform::eIoStatus& status) {
    switch (status.reason) {
        case platform::eIoReason::NotFound:
            return Words(ePhrase::FileNotFound);
        case platform::eIoReason::AccessDenied:
            return Words(ePhrase::FileAccessDenied);
        case platform::eIoReason::NoSpace:
            return Words(ePhrase::FileNoSpace);
        case platform::eIoReason::NoDrive:
            return Words(ePhrase::FileNoDrive);
        case platform::eIoReason::Fenced:
            return Words(ePhrase::FileFenced);
        default:
            return {status.Text(), status.Text()};
    }
}

void TellFailure(eMessageId id, const std::string& path, const platform::eIoStatus& status,
                 const eMessagePlace& owner) {
    eMessagePlace place = owner;
    place.file = path;
    const bool hasOwner = !owner.material.empty();
    Tell(nullptr, id, place, path, ReasonOf(status),
         hasOwner ? Words(ePhrase::OwnerOfFile, owner.material, owner.map) : eBilingual());
}

}  // namespace

void TellWriteFailure(const std::string& path, const platform::eIoStatus& status,
                      const eMessagePlace& owner) {
    TellFailure(eMessageId::FilesNotWritten, path, status, owner);
}

void TellReadFailure(const std::string& path, const platform::eIoStatus& status, const eMessagePlace& owner) {
    TellFailure(eMessageId::FilesNotRead, path, status, owner);
}

}  // namespace xIo
