#include "platform/own_module.h"

#include <dlfcn.h>

#include "platform/native_path.h"
#include "platform/path_text.h"

namespace platform {

std::string OwnModuleFolder() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void*>(&OwnModuleFolder), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    std::string file;
    MakeNative(info.dli_fname, ePathForm::Native, file);
    return PathTextFromUtf8(NativeParent(file) + "/").value_or(std::string());
}

}  // namespace platform
