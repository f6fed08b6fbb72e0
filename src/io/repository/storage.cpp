#include "io/repository/storage.h"

#include <utility>

#include "io/name.h"
#include "io/path.h"
#include "io/streams/stream_file.h"

namespace xIo::xRepository {

eStorage::~eStorage() {
    for (std::unique_ptr<eStorage> part = std::move(next); part;) {
        part = std::move(part->next);
    }
}

void eStorage::Assign(const eStorage& other) {
    size = other.size;
    if (other.next) {
        next = other.next->Clone();
        if (next) {
            next->Assign(*other.next);
        }
    }
}

bool eFileStorage::IsSame(const eStorage& other) const {
    const auto* file = dynamic_cast<const eFileStorage*>(&other);
    return file != nullptr && file->path == path;
}

void eFileStorage::Assign(const eStorage& other) {
    eStorage::Assign(other);
    if (const auto* file = dynamic_cast<const eFileStorage*>(&other)) {
        path = file->path;
    }
}

std::unique_ptr<eStream> eFileStorage::Open(std::uint32_t flags) {
    if ((flags & (streamWrite | streamTruncate)) != 0) {
        CreateFolders(eName(path).Part(eName::Folder));
    }
    auto stream = std::make_unique<eFileStream>();
    return stream->Open(path, flags, fileBufferSize) ? std::move(stream) : nullptr;
}

}  // namespace xIo::xRepository
