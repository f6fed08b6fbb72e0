#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/io_status.h"

namespace platform {

struct eFoundName {
    std::wstring name;
    DWORD attributes = 0;
    std::int64_t size = 0;  // bytes

    bool IsFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
};

// Everything in the folder but "." and "..".
eIoStatus ListNames(const std::string& native, std::vector<eFoundName>& names);

}  // namespace platform
