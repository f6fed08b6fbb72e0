// A folder for files that only this process needs.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/io_status.h"

namespace platform {

// Removed at the end of its life with all the files that were written through it. Its name is in lower case
// and plain ASCII, so that paths into it survive the system's handling of names. It lies outside the write
// fence and outside what file observers are told: nobody asked for these files.
class eTemporaryFolder {
public:
    eTemporaryFolder(const eTemporaryFolder&) = delete;
    eTemporaryFolder& operator=(const eTemporaryFolder&) = delete;
    ~eTemporaryFolder();

    // A new folder that only the user may enter, where the system keeps such folders. Null on a failure.
    static eIoStatus Make(std::shared_ptr<eTemporaryFolder>& folder);

    // As the operating system spells it, without a slash at the end.
    const std::string& Path() const { return path; }

    // Writes a file whose name (UTF-8) holds no slash and was not written before.
    eIoStatus Write(const std::string& name, std::span<const std::uint8_t> content);

private:
    explicit eTemporaryFolder(std::string folderPath) : path(std::move(folderPath)) {}

    std::string path;
    std::vector<std::string> files;  // paths
};

}  // namespace platform
