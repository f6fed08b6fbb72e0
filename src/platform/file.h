// One open file of the operating system, without any buffer. Every operation tells how it ended.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/io_status.h"
#include "platform/path_lookup.h"

namespace platform {

enum class eFileAccess {
    Read,      // the file must exist
    Write,     // reading and writing; created if missing, content kept
    WriteNew,  // reading and writing; created if missing, cut to length 0
};

class eOpenFile;

class eFile {
public:
    eFile();
    eFile(const eFile&) = delete;
    eFile& operator=(const eFile&) = delete;
    ~eFile();  // closes; whoever wrote calls Close before and looks at its result

    // Other processes may read and write the file meanwhile. Writing obeys the write fence.
    eIoStatus Open(std::string_view path, eFileAccess access, ePathForm form = ePathForm::Resource);
    bool IsOpen() const { return file != nullptr; }
    eIoStatus Close();

    // Reads up to count bytes; got is less than count only at the end of the file or on an error.
    eIoStatus Read(void* data, std::size_t count, std::size_t& got);
    // Writes all of it or fails. A signal or a short write of the system does not end it early.
    eIoStatus Write(const void* data, std::size_t count);
    // From the start of the file, in bytes.
    eIoStatus Seek(std::int64_t position);
    eIoStatus Truncate(std::int64_t length);
    eIoStatus Length(std::int64_t& length) const;
    // Returns when the content has reached the disk, or at once on a file system that can't tell.
    eIoStatus Sync();

private:
    std::unique_ptr<eOpenFile> file;  // of the layer in use when it was opened
};

// Gives the file the name target, replacing what stands there in one step, and writes the change of name
// through to disk. The content is the caller's to Sync. Both paths must lie on one volume. Tells the file
// observer that target was written.
eIoStatus RenameOver(std::string_view source, std::string_view target, ePathForm form = ePathForm::Resource);

// Removes a file that never had its final name, and tells nobody.
eIoStatus DiscardFile(std::string_view path, ePathForm form = ePathForm::Resource);

}  // namespace platform
