#include "platform/folder.h"

#include <string>

#include "platform/file_layer.h"
#include "platform/native_fence.h"
#include "platform/native_path.h"

namespace platform {
namespace {

eEntryKind KindOf(std::string_view path, ePathForm form) {
    std::string native;
    return MakeNative(path, form, native).IsOk() ? Files().KindOf(native) : eEntryKind::None;
}

}  // namespace

bool Exists(std::string_view path, ePathForm form) {
    return KindOf(path, form) != eEntryKind::None;
}

bool IsFolder(std::string_view path, ePathForm form) {
    return KindOf(path, form) == eEntryKind::Folder;
}

eIoStatus MakeFolder(std::string_view path, ePathForm form) {
    std::string native;
    const eIoStatus found = MakeNative(path, form, native);
    if (!found.IsOk()) {
        return found;
    }
    if (!IsNativeFolderAllowed(native) && !Exists(native, ePathForm::Native)) {
        return {eIoReason::Fenced, 0};
    }
    return Files().MakeFolder(native);
}

eIoStatus RemoveTree(std::string_view path, ePathForm form) {
    std::string native;
    const eIoStatus status = MakeNativeForWriting(path, form, native);
    return status.IsOk() ? Files().Remove(native) : status;
}

}  // namespace platform
