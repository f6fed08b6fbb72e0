#include "io/streams/file_failure.h"

#include "messages/io_reason.h"
#include "messages/tell.h"

namespace xIo {
namespace {

eBilingual ReasonOf(const platform::eIoStatus& status) {
    const std::optional<ePhrase> phrase = PhraseOf(status.reason);
    return phrase ? Words(*phrase) : eBilingual{status.Text(), status.Text()};
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
