#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/file_layer.h"

namespace platform {

// A layer in front of another one, to which everything goes on that its heir does not do otherwise.
class eLayerOver : public eFileLayer {
public:
    bool IsLasting() const override { return below.IsLasting(); }
    bool LeavesSame() const override { return below.LeavesSame(); }
    eIoStatus Open(const std::string& native, eFileAccess access, ePathForm form,
                   std::unique_ptr<eOpenFile>& file) override {
        return below.Open(native, access, form, file);
    }
    eIoStatus Sync(eOpenFile& file) override { return below.Sync(file); }
    std::vector<eIoStatus> SyncContents(const std::vector<std::string>& natives) override {
        return below.SyncContents(natives);
    }
    void SyncNames(const std::vector<std::string>& folders) override { below.SyncNames(folders); }
    eIoStatus Rename(const std::string& source, const std::string& target) override {
        return below.Rename(source, target);
    }
    eIoStatus MakeFolder(const std::string& native) override { return below.MakeFolder(native); }
    eIoStatus Remove(const std::string& native) override { return below.Remove(native); }
    eIoStatus Discard(const std::string& native) override { return below.Discard(native); }
    eIoStatus Touch(const std::string& native) override { return below.Touch(native); }
    eEntryKind KindOf(const std::string& native) const override { return below.KindOf(native); }
    std::optional<std::int64_t> LastWriteTime(const std::string& native) const override {
        return below.LastWriteTime(native);
    }
    eIoStatus CheckFolder(const std::string& native) const override { return below.CheckFolder(native); }

protected:
    explicit eLayerOver(eFileLayer& lower) : below(lower) {}

    eFileLayer& below;
};

}  // namespace platform
