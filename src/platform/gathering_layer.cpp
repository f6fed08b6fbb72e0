#include "platform/gathering_layer.h"

#include <set>
#include <system_error>
#include <utility>

#include "platform/native_path.h"

namespace platform {

std::vector<eUnsettledFile> eGatheringLayer::Settle() {
    std::vector<eUnsettledFile> unsettled;
    const std::vector<eIoStatus> contents = below.SyncContents(Temporaries());
    std::vector<const eWaiting*> whole;
    auto content = contents.begin();
    for (const auto& [key, file] : waiting) {
        if (content->IsOk()) {
            whole.push_back(&file);
        } else {
            unsettled.push_back({file.temporary, file.target, *content, false});
        }
        ++content;
    }
    std::set<std::string> folders;
    for (const eWaiting* file : whole) {
        const eIoStatus status = below.Rename(file->temporary, file->target);
        if (status.IsOk()) {
            folders.insert(NativeParent(file->target));
        } else {
            unsettled.push_back({file->temporary, file->target, status, true});
        }
    }
    below.SyncNames({folders.begin(), folders.end()});
    waiting.clear();
    targets.clear();
    return unsettled;
}

std::vector<std::string> eGatheringLayer::Temporaries() const {
    std::vector<std::string> temporaries;
    for (const auto& [key, file] : waiting) {
        temporaries.push_back(file.temporary);
    }
    return temporaries;
}

eIoStatus eGatheringLayer::Open(const std::string& native, eFileAccess access, ePathForm form,
                                std::unique_ptr<eOpenFile>& file) {
    if (access == eFileAccess::Read) {
        return below.Open(Standing(native), access, form, file);
    }
    const eIoStatus settled = SettleFor(native);
    return settled.IsOk() ? below.Open(native, access, form, file) : settled;
}

eIoStatus eGatheringLayer::Sync(eOpenFile& file) {
    file.StartSync();
    return {};
}

// What would fail later fails now, as far as one can see. That the source is there its writer knows.
eIoStatus eGatheringLayer::Rename(const std::string& source, const std::string& target) {
    if (below.KindOf(target) == eEntryKind::Folder) {
        return below.Rename(source, target);
    }
    const eIoStatus settled = SettleFor(target);
    if (settled.IsOk()) {
        waiting[NativeCaseKey(target)] = {source, target};
        targets[NativeCaseKey(source)] = NativeCaseKey(target);
    }
    return settled;
}

// A file that goes needs no wait for the disk.
eIoStatus eGatheringLayer::Remove(const std::string& native) {
    const auto found = waiting.find(NativeCaseKey(native));
    if (found != waiting.end()) {
        const eWaiting file = found->second;
        targets.erase(NativeCaseKey(file.temporary));
        waiting.erase(found);
        const eIoStatus status = below.Rename(file.temporary, file.target);
        return status.IsOk() ? below.Remove(native) : status;
    }
    return below.Remove(native);
}

eEntryKind eGatheringLayer::KindOf(const std::string& native) const {
    return IsWaitingTemporary(native) ? eEntryKind::None : below.KindOf(Standing(native));
}

std::optional<std::int64_t> eGatheringLayer::LastWriteTime(const std::string& native) const {
    return IsWaitingTemporary(native) ? std::nullopt : below.LastWriteTime(Standing(native));
}

const std::string& eGatheringLayer::Standing(const std::string& native) const {
    const auto found = waiting.find(NativeCaseKey(native));
    return found != waiting.end() ? found->second.temporary : native;
}

bool eGatheringLayer::IsWaitingTemporary(const std::string& native) const {
    return targets.contains(NativeCaseKey(native));
}

eIoStatus eGatheringLayer::SettleFor(const std::string& native) {
    const auto temporary = targets.find(NativeCaseKey(native));
    const auto found = waiting.find(temporary != targets.end() ? temporary->second : NativeCaseKey(native));
    if (found == waiting.end()) {
        return {};
    }
    const eWaiting file = found->second;
    eIoStatus status = below.SyncContents({file.temporary}).front();
    if (status.IsOk()) {
        status = below.Rename(file.temporary, file.target);
    }
    if (status.IsOk()) {
        targets.erase(NativeCaseKey(file.temporary));
        waiting.erase(found);
    }
    return status;
}

}  // namespace platform
