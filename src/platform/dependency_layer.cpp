#include "platform/dependency_layer.h"

namespace platform {

void eDependencyLayer::Disregard(const std::string& folder) {
    std::erase_if(asked, [&](const std::string& path) { return path.starts_with(folder + "/"); });
    disregarded = folder + "/";
}

eIoStatus eDependencyLayer::Open(const std::string& native, eFileAccess access, ePathForm form,
                                 std::unique_ptr<eOpenFile>& file) {
    if (access == eFileAccess::Read) {
        NoteAsked(native);
    } else {
        own.insert(native);
    }
    return below.Open(native, access, form, file);
}

eIoStatus eDependencyLayer::Rename(const std::string& source, const std::string& target) {
    own.insert(target);
    return below.Rename(source, target);
}

eIoStatus eDependencyLayer::Remove(const std::string& native) {
    own.insert(native);
    return below.Remove(native);
}

eEntryKind eDependencyLayer::KindOf(const std::string& native) const {
    const eEntryKind kind = below.KindOf(native);
    if (kind != eEntryKind::Folder) {
        NoteAsked(native);
    }
    return kind;
}

std::optional<std::int64_t> eDependencyLayer::LastWriteTime(const std::string& native) const {
    NoteAsked(native);
    return below.LastWriteTime(native);
}

void eDependencyLayer::NoteAsked(const std::string& native) const {
    const bool isDisregarded = !disregarded.empty() && native.starts_with(disregarded);
    if (!isDisregarded && !own.contains(native)) {
        asked.insert(native);
    }
}

}  // namespace platform
