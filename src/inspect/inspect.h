#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "inspect/description.h"

namespace inspect {

struct eInspection {
    eDescription description;
    std::string problem;  // UTF-8; empty if the file could be read
};

// Says what is in a file that the export writes. The kind is found by content, for text by its first block
// and the name: `fileName` is the last part of the path, UTF-8.
eInspection InspectContent(const std::string& fileName, std::span<const std::uint8_t> content);

}  // namespace inspect
