#pragma once

#include <string_view>

#include "standalone/loaders/shared/import_report.h"

namespace standalone {

// The two parts of a glTF file, as views into its bytes.
struct eGltfContainer {
    bool isBinary = false;
    std::string_view json;
    std::string_view binary;  // the buffer that a binary file brings along; empty without one
};

// Takes the file apart. A file that does not begin as a binary one is JSON from start to end. Faults of the
// binary frame are reported with the byte at which they stand.
eGltfContainer OpenGltfContainer(std::string_view bytes, eImportReport& report);

}  // namespace standalone
