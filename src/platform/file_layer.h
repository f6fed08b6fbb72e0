// The files that this module works on: those of the disk, unless another layer has been put in front of them.
// Paths are native (native_path.h), looked up and let through by the fence before they come here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/file.h"
#include "platform/io_status.h"

namespace platform {

// One open file; eFile says what its operations mean. Closed at the end of its life.
class eOpenFile {
public:
    virtual ~eOpenFile() = default;

    virtual eIoStatus Close() = 0;
    virtual eIoStatus Read(void* data, std::size_t count, std::size_t& got) = 0;
    virtual eIoStatus Write(const void* data, std::size_t count) = 0;
    virtual eIoStatus Seek(std::int64_t position) = 0;
    virtual eIoStatus Truncate(std::int64_t length) = 0;
    virtual eIoStatus Length(std::int64_t& length) const = 0;
    virtual eIoStatus Sync() = 0;
    // Lets the system begin with what Sync will wait for, where it can.
    virtual void StartSync() {}
};

using eFileContent = std::vector<std::uint8_t>;

enum class eEntryKind { None, File, Folder };

class eFileLayer {
public:
    virtual ~eFileLayer() = default;

    // True if what is written outlasts the process, so that it is worth while to bring it to the disk.
    virtual bool IsLasting() const { return false; }

    // True if a file that has its bytes already is to be left as it is instead of being written again.
    virtual bool LeavesSame() const { return false; }

    // A path of the form Resource must be a file with an end: no device, no pipe.
    virtual eIoStatus Open(const std::string& native, eFileAccess access, ePathForm form,
                           std::unique_ptr<eOpenFile>& file) = 0;
    // Brings the content to the disk: now, or before the file gets its final name where names wait.
    virtual eIoStatus Sync(eOpenFile& file) { return file.Sync(); }
    // The same for files that are closed, with a result for each.
    virtual std::vector<eIoStatus> SyncContents(const std::vector<std::string>& natives) = 0;
    // Brings the names in folders to the disk. They are replaced and complete whether this succeeds or not;
    // should the power fail before, the old files stand there, which are complete too. So there is no result.
    virtual void SyncNames(const std::vector<std::string>& folders) = 0;
    // Replaces what stands under the name target in one step; SyncNames makes it last.
    virtual eIoStatus Rename(const std::string& source, const std::string& target) = 0;
    // Reason Exists if the name is taken already.
    virtual eIoStatus MakeFolder(const std::string& native) = 0;
    // A folder with all its content; links are not followed. Tells the file observer of each file.
    virtual eIoStatus Remove(const std::string& native) = 0;
    // A file that never had its final name: the observer is told nothing.
    virtual eIoStatus Discard(const std::string& native) = 0;
    // Makes the present time that of the file's last write. Refused for a link.
    virtual eIoStatus Touch(const std::string& native) = 0;

    virtual eEntryKind KindOf(const std::string& native) const = 0;
    // Nanoseconds since 1970-01-01 UTC; nothing if the file can't be reached.
    virtual std::optional<std::int64_t> LastWriteTime(const std::string& native) const = 0;
    // Ok if files can be made in the folder, as far as the system tells without trying.
    virtual eIoStatus CheckFolder(const std::string& native) const = 0;
};

// The whole content of a file of the layer.
eIoStatus ReadWhole(eFileLayer& layer, const std::string& native, eFileContent& content);

// The files of the disk.
eFileLayer& DiskLayer();

// The layer in use.
eFileLayer& Files();

// Puts a layer in use, which stays the caller's; null goes back to the disk.
void UseFileLayer(eFileLayer* layer);

}  // namespace platform
