#include "platform/shared_library.h"

#include <dlfcn.h>

#include "platform/native_path.h"

namespace platform {

eSharedLibrary::~eSharedLibrary() {
    if (handle != nullptr) {
        ::dlclose(handle);
    }
}

std::string eSharedLibrary::Load(const std::string& nativePath) {
    std::string absolute;
    // A name without a slash would be searched for in the system's folders.
    MakeNative(nativePath, ePathForm::Native, absolute);
    return LoadFromSystem(absolute);
}

std::string eSharedLibrary::LoadFromSystem(const std::string& name) {
    handle = ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    return handle != nullptr ? std::string() : ::dlerror();
}

void* eSharedLibrary::Find(const char* name) const {
    return ::dlsym(handle, name);
}

}  // namespace platform
