#include "platform/shared_library.h"

#include <windows.h>

#include "platform/native_path.h"
#include "platform/win32/error_status.h"
#include "platform/win32/wide.h"

namespace platform {

eSharedLibrary::~eSharedLibrary() {
    if (handle != nullptr) {
        ::FreeLibrary(static_cast<HMODULE>(handle));
    }
}

std::string eSharedLibrary::Load(const std::string& nativePath) {
    std::string absolute;
    // A name without a folder would be searched for in the system's folders.
    MakeNative(nativePath, ePathForm::Native, absolute);
    handle = ::LoadLibraryW(WidePath(absolute).c_str());
    return handle != nullptr ? std::string() : StatusOf(false).Text();
}

std::string eSharedLibrary::LoadFromSystem(const std::string& name) {
    handle = ::LoadLibraryExW(WidePath(name).c_str(), nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    return handle != nullptr ? std::string() : StatusOf(false).Text();
}

void* eSharedLibrary::Find(const char* name) const {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle), name));
}

}  // namespace platform
