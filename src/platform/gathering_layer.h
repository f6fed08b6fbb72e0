// Files that get their final names together. What a run writes under a temporary name keeps that name until
// Settle; until then the file answers to its final name all the same. A run of hundreds of files so waits for
// the disk once, not for each of them.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/layer_over.h"

namespace platform {

// A file that could not get its final name, where the old content stands.
struct eUnsettledFile {
    std::string temporary;
    std::string target;
    eIoStatus status;
    bool isOnDisk = false;  // the content is, and only the name could not be given
};

class eGatheringLayer : public eLayerOver {
public:
    explicit eGatheringLayer(eFileLayer& lower) : eLayerOver(lower) {}

    // Nothing that is written waits for the disk before Settle.
    bool IsLasting() const override { return false; }
    // A run that finds its results there changes nothing but the times that somebody asks for.
    bool LeavesSame() const override { return true; }

    // Brings all contents to the disk, then gives all names, then brings those to the disk, each folder once.
    // Whatever happens meanwhile, a final name holds its old file or the whole new one.
    std::vector<eUnsettledFile> Settle();

    // What waits under the name or on its way to it is settled before it is opened for writing.
    eIoStatus Open(const std::string& native, eFileAccess access, ePathForm form,
                   std::unique_ptr<eOpenFile>& file) override;
    eIoStatus Sync(eOpenFile& file) override;
    void SyncNames(const std::vector<std::string>&) override {}  // Settle does it
    eIoStatus Rename(const std::string& source, const std::string& target) override;
    eIoStatus Remove(const std::string& native) override;
    eIoStatus Touch(const std::string& native) override { return below.Touch(Standing(native)); }
    eEntryKind KindOf(const std::string& native) const override;
    std::optional<std::int64_t> LastWriteTime(const std::string& native) const override;

private:
    struct eWaiting {
        std::string temporary;
        std::string target;
    };
    using eWaitingFiles = std::map<std::string, eWaiting>;  // by NativeCaseKey of the final name

    std::vector<std::string> Temporaries() const;  // in the order of `waiting`
    // Where the content of the name lies now.
    const std::string& Standing(const std::string& native) const;
    bool IsWaitingTemporary(const std::string& native) const;
    eIoStatus SettleFor(const std::string& native);

    eWaitingFiles waiting;
    std::map<std::string, std::string> targets;  // keys of `waiting` by NativeCaseKey of the temporary name
};

}  // namespace platform
