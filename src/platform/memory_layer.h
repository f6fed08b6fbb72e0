// Files in memory over those of another layer, which is read and never changed: what a run would write can be
// looked at before anything is touched.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/file_layer.h"

namespace platform {

class eMemoryLayer : public eFileLayer {
public:
    explicit eMemoryLayer(eFileLayer& lower = DiskLayer()) : below(lower) {}

    // What stands under a name instead of what lies below.
    struct eEntry {
        eEntryKind kind = eEntryKind::None;     // None: removed
        std::shared_ptr<eFileContent> content;  // of a file; never null then
        std::int64_t lastWrite = 0;
    };
    // Null where memory has nothing and the file below counts. Valid until the next change.
    const eEntry* Find(const std::string& native) const;

    // A new file needs a folder that stands and, below memory, one that can be written. Reading goes below
    // where memory has nothing.
    eIoStatus Open(const std::string& native, eFileAccess access, ePathForm form,
                   std::unique_ptr<eOpenFile>& file) override;
    std::vector<eIoStatus> SyncContents(const std::vector<std::string>& natives) override {
        return std::vector<eIoStatus>(natives.size());
    }
    void SyncNames(const std::vector<std::string>&) override {}
    eIoStatus Rename(const std::string& source, const std::string& target) override;
    eIoStatus MakeFolder(const std::string& native) override;
    // Files alone: a run removes no folder, and one is refused.
    eIoStatus Remove(const std::string& native) override;
    eIoStatus Discard(const std::string& native) override;
    eIoStatus Touch(const std::string& native) override;
    eEntryKind KindOf(const std::string& native) const override;
    std::optional<std::int64_t> LastWriteTime(const std::string& native) const override;
    eIoStatus CheckFolder(const std::string& native) const override;

private:
    void Put(const std::string& native, eEntryKind kind, std::shared_ptr<eFileContent> content = nullptr);
    void Forget(const std::string& native);
    eIoStatus CheckParent(const std::string& native) const;

    eFileLayer& below;
    std::map<std::string, eEntry> entries;  // by NativeCaseKey
};

}  // namespace platform
