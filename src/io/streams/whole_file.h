// Files that are written in one go, through the .tmp step of eFileStream: the final name always holds a
// complete file. Where the file of a run (gathered_files.h) has the bytes already it only gets the time of
// the writing, by which textures are kept or made again. On a failure the user is told the file and the
// reason and the result is false; `owner` is the material and the map that the file was for, if any.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "messages/message_place.h"
#include "platform/io_status.h"

namespace xIo {

// Whether other runs may write the file at the same time. Then its .tmp has a name of this process's own:
// "wood.bmp.station7-5f3a09c1-4026531836-4711.tmp".
enum class eSharing { Own, Shared };

bool WriteWholeFile(const std::string& path, std::span<const std::uint8_t> content,
                    const eMessagePlace& owner = {}, eSharing sharing = eSharing::Own);
// The same without a word: the caller knows whom to tell.
platform::eIoStatus StoreWholeFile(const std::string& path, std::span<const std::uint8_t> content);

// The copy's last-write time is that of the copying. The source may be the target.
bool CopyWholeFile(const std::string& source, const std::string& target, const eMessagePlace& owner = {},
                   eSharing sharing = eSharing::Own);

}  // namespace xIo
