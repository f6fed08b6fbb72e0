#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "io/repository/zip_directory.h"
#include "io/streams/stream.h"
#include "io/streams/stream_file.h"
#include "io/streams/stream_memory.h"

namespace xIo {

// The inflated content of an entry, all of it in the buffer.
class eZipStream : public eStream {
public:
    // `size` bytes of zeros.
    explicit eZipStream(int size);

    std::uint8_t* Data() { return bufferBegin; }

protected:
    void Advance() override {}
    void Fill() override {}
};

namespace xRepository {

// An open .pak. Its central directory is held in memory, so that mounting and finding entries needs no seek
// on disk. One thread at a time. It lives as long as one of its entries.
class eZipContainer {
public:
    // Fatal if the file can't be opened or is no sound container.
    explicit eZipContainer(const std::string& path);
    ~eZipContainer();
    eZipContainer(const eZipContainer&) = delete;
    eZipContainer& operator=(const eZipContainer&) = delete;

    const std::string& Path() const { return path; }
    // Hands out the files found at open, once.
    std::vector<eZipEntry> TakeEntries() { return std::move(entries); }

    // Inflates an entry; costs memory of its size. Fatal, with the description, if its bytes are damaged.
    std::unique_ptr<eZipStream> Inflate(const eZipEntry& entry, const std::string& description);

private:
    struct eFileFunctions;

    eZipEnd ReadEnd();
    void ReadDirectory(const eZipEnd& end);
    void OpenUnzip();
    bool InflateInto(const eZipEntry& entry, eZipStream& stream);
    [[noreturn]] void FailToOpen(const std::string& reason) const;
    bool Seek(std::int64_t target);
    std::int64_t Tell() const;

    std::string path;
    eFileStream fileStream;
    eMemoryStream directory;
    std::int32_t directoryStart = -1;  // in the file; -1 until the end record was read
    std::int32_t directoryEnd = -1;
    eStream* current = &fileStream;  // what the unzip reads from
    void* unzip = nullptr;
    std::vector<eZipEntry> entries;
};

}  // namespace xRepository
}  // namespace xIo
