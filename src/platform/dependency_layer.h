// Notes which files a run asks for, so that a build can tell later whether its results are out of date.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>

#include "platform/layer_over.h"

namespace platform {

class eDependencyLayer : public eLayerOver {
public:
    explicit eDependencyLayer(eFileLayer& lower = DiskLayer()) : eLayerOver(lower) {}

    // Native paths of the files that were read, or whose presence or time was asked for, before this run
    // wrote them itself: those that were missing too, but no folders.
    const std::set<std::string>& Asked() const { return asked; }

    // Files in the folder (native) are the run's own, whoever writes them.
    void Disregard(const std::string& folder);

    eIoStatus Open(const std::string& native, eFileAccess access, ePathForm form,
                   std::unique_ptr<eOpenFile>& file) override;
    eIoStatus Rename(const std::string& source, const std::string& target) override;
    eIoStatus Remove(const std::string& native) override;
    eEntryKind KindOf(const std::string& native) const override;
    std::optional<std::int64_t> LastWriteTime(const std::string& native) const override;

private:
    void NoteAsked(const std::string& native) const;

    mutable std::set<std::string> asked;  // a question changes nothing but what is known of the run
    std::string disregarded;              // a folder, with its slash; empty for none
    std::set<std::string> own;            // written, replaced or removed by the run
};

}  // namespace platform
