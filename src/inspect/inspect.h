#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/bilingual.h"
#include "inspect/description.h"

namespace inspect {

struct eInspection {
    eDescription description;
    eBilingual problem;  // UTF-8; empty if the file could be read. What a reader finds broken is English
};

// Says what is in a file that the export writes. The kind is found by content, for text by its first block
// and the name, in code page 1251: that of the resource, or the last part of a loose file's path. What a text
// includes is looked up in the repository.
eInspection InspectContent(const std::string& name, std::span<const std::uint8_t> content);

}  // namespace inspect
