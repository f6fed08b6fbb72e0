// Notes which files a run asks for, so that a build can tell later whether its results are out of date.
// Everything goes on to another layer.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>

#include "platform/file_layer.h"

namespace platform {

class eDependencyLayer : public eFileLayer {
public:
    explicit eDependencyLayer(eFileLayer& lower = DiskLayer()) : below(lower) {}

    // Native paths of the files that were read, or whose presence or time was asked for, before this run
    // wrote them itself: those that were missing too, but no folders.
    const std::set<std::string>& Asked() const { return asked; }

    // Files in the folder (native) are the run's own, whoever writes them.
    void Disregard(const std::string& folder);

    bool IsLasting() const override { return below.IsLasting(); }
    eIoStatus Open(const std::string& native, eFileAccess access, ePathForm form,
                   std::unique_ptr<eOpenFile>& file) override;
    eIoStatus Sync(eOpenFile& file) override { return below.Sync(file); }
    eIoStatus SyncContent(const std::string& native) override { return below.SyncContent(native); }
    void SyncNames(const std::string& folder) override { below.SyncNames(folder); }
    eIoStatus Rename(const std::string& source, const std::string& target) override;
    eIoStatus MakeFolder(const std::string& native) override { return below.MakeFolder(native); }
    eIoStatus Remove(const std::string& native) override;
    eEntryKind KindOf(const std::string& native) const override;
    std::optional<std::int64_t> LastWriteTime(const std::string& native) const override;
    eIoStatus CheckFolder(const std::string& native) const override { return below.CheckFolder(native); }

private:
    void NoteAsked(const std::string& native) const;

    eFileLayer& below;
    mutable std::set<std::string> asked;  // a question changes nothing but what is known of the run
    std::string disregarded;              // a folder, with its slash; empty for none
    std::set<std::string> own;            // written, replaced or removed by the run
};

}  // namespace platform
