#include "platform/own_module.h"

#include <array>

#include "platform/path_text.h"
#include "platform/win32/module_handle.h"
#include "platform/win32/wide.h"

namespace platform {
namespace {

HINSTANCE ownModule = nullptr;

}  // namespace

void SetModuleHandle(HINSTANCE module) {
    ownModule = module;
}

HINSTANCE ModuleHandle() {
    return ownModule;
}

std::string OwnModuleFolder() {
    constexpr std::size_t kLongestPath = 0x8000;
    std::wstring path(kLongestPath, L'\0');
    path.resize(::GetModuleFileNameW(ownModule, path.data(), kLongestPath));
    return PathTextFromUtf8(Utf8FromWide(path.substr(0, path.rfind(L'\\') + 1))).value_or(std::string());
}

}  // namespace platform
