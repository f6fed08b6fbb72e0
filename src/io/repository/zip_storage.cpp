#include "io/repository/zip_storage.h"

#include <utility>

#include "base/format.h"

namespace xIo::xRepository {
namespace {

std::unique_ptr<eMemoryStream> CopyOf(eStream& stream) {
    auto copy = std::make_unique<eMemoryStream>(stream.Size());
    stream.Seek(0, fromStart);
    copy->WriteFrom(stream, -1);
    copy->Seek(0, fromStart);
    return copy;
}

}  // namespace

bool eZipStorage::IsSame(const eStorage& other) const {
    const auto* entry = dynamic_cast<const eZipStorage*>(&other);
    return entry != nullptr && entry->container == container && entry->entryName == entryName;
}

std::string eZipStorage::Description() const {
    return (format("%1%[%2%]") % container->Path() % entryName).Text();
}

std::unique_ptr<eStream> eZipStorage::Open(std::uint32_t /*flags*/) {
    if (cache) {
        return CopyOf(*cache);
    }
    return container->Inflate({entryName, size, directoryPosition, entryIndex}, Description());
}

void eZipStorage::FillCache() {
    cache = CopyOf(*Open(streamRead));
}

std::vector<eZipFile> ReadContainer(const std::string& path) {
    const auto container = std::make_shared<eZipContainer>(path);
    std::vector<eZipFile> files;
    for (eZipEntry& entry : container->TakeEntries()) {
        auto storage = std::make_unique<eZipStorage>();
        storage->container = container;
        storage->size = entry.size;
        storage->directoryPosition = entry.position;
        storage->entryIndex = entry.index;
        storage->entryName = entry.name;
        files.push_back({std::move(entry.name), std::move(storage)});
    }
    return files;
}

}  // namespace xIo::xRepository
