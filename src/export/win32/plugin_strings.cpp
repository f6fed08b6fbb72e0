#include "export/plugin_strings.h"

#include <algorithm>
#include <string>

#include "platform/win32/module_handle.h"
#include "platform/win32/wide.h"

const char* GetString(int id) {
    constexpr int kRoom = 256;
    static char buffer[kRoom];
    wchar_t wide[kRoom];
    const int length = platform::ModuleHandle() != nullptr
                           ? ::LoadStringW(platform::ModuleHandle(), static_cast<UINT>(id), wide, kRoom)
                           : 0;
    if (length <= 0) {
        return nullptr;
    }
    const std::string text =
        platform::AnsiFromWide({wide, static_cast<std::size_t>(length)}).value_or(std::string());
    buffer[text.copy(buffer, kRoom - 1)] = '\0';
    return buffer;
}
