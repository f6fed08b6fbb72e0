#pragma once

#include <memory>
#include <string>
#include <vector>

#include "io/repository/storage.h"
#include "io/repository/stream_zip.h"

namespace xIo::xRepository {

// An entry of a container. All entries share the container and keep it open.
class eZipStorage : public eStorage {
public:
    std::shared_ptr<eZipContainer> container;
    std::uint32_t directoryPosition = 0;  // of the entry in the central directory
    std::uint32_t entryIndex = 0;         // its number there
    std::string entryName;

    // The content, once the file cache has asked for it.
    std::unique_ptr<eStream> cache;

    // An entry is not cloned.
    std::unique_ptr<eStorage> Clone() const override { return nullptr; }
    std::string ResolvePath(const std::string&) const override { return {}; }
    bool IsSame(const eStorage& other) const override;
    void Assign(const eStorage&) override {}
    std::string Description() const override;
    // A stream of the caller's own; the flags are not looked at.
    std::unique_ptr<eStream> Open(std::uint32_t flags) override;
    // Inflates the entry into `cache`.
    void FillCache();
};

struct eZipFile {
    std::string name;  // below the container's folder
    std::unique_ptr<eZipStorage> storage;
};

// The files of a .pak in the order of its directory. Fatal if it can't be opened or is not sound.
std::vector<eZipFile> ReadContainer(const std::string& path);

}  // namespace xIo::xRepository
