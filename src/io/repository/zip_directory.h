#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "io/repository/zip_format.h"

namespace xIo {

// A file in a container.
struct eZipEntry {
    std::string name;            // lower case with slashes, without a slash at the start
    std::int32_t size = 0;       // bytes of the content
    std::uint32_t position = 0;  // of its central header, as the end record counts
    std::uint32_t index = 0;     // number in the directory, folders counted
};

// The files of a central directory, in its order. Nothing that the directory says is believed: a size that
// the compressed bytes can't have, a place beyond the container, a name that leads out of it, a count that
// does not fit are a problem (English, one line), and the list is empty then. Folders are left out.
std::vector<eZipEntry> ReadZipDirectory(std::span<const std::uint8_t> directory, const eZipEnd& end,
                                        std::string& problem);

}  // namespace xIo
