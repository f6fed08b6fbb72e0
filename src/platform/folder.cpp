#include "platform/folder.h"

#include "platform/native_fence.h"
#include "platform/native_path.h"

namespace platform {

eIoStatus MakeFolder(std::string_view path, ePathForm form) {
    std::string native;
    const eIoStatus found = MakeNative(path, form, native);
    if (!found.IsOk()) {
        return found;
    }
    if (!IsNativeFolderAllowed(native) && !Exists(native, ePathForm::Native)) {
        return {eIoReason::Fenced, 0};
    }
    return MakeNativeFolder(native);
}

}  // namespace platform
