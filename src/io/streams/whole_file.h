// Files that are written in one go, through the .tmp step of eFileStream: the final name always holds a
// complete file. On a failure the user is told the file and the reason and the result is false; `owner` is
// the material and the map that the file was for, if any.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "messages/message_place.h"
#include "platform/io_status.h"

namespace xIo {

bool WriteWholeFile(const std::string& path, std::span<const std::uint8_t> content,
                    const eMessagePlace& owner = {});
// The same without a word: the caller knows whom to tell.
platform::eIoStatus StoreWholeFile(const std::string& path, std::span<const std::uint8_t> content);

// The copy's last-write time is that of the copying. The source may be the target.
bool CopyWholeFile(const std::string& source, const std::string& target, const eMessagePlace& owner = {});

}  // namespace xIo
