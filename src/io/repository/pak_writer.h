#pragma once

#include <cstdint>
#include <string>

#include "base/bilingual.h"

namespace xIo {

struct ePackedFolder {
    int files = 0;
    std::int64_t bytes = 0;        // of the files
    std::int64_t packedBytes = 0;  // of the container
    // Why there is no container, UTF-8; empty if there is one.
    eBilingual problem;
};

// Packs all files below the folder into a .pak. It depends on their lower-case names and their content alone:
// names in the order of eMountOrder, one point in time for all. Of two names that differ in case the file
// that is found under the lower-case one is packed. The container itself, should it lie in the folder, is
// left out. It is written under a .tmp name, and an old one stays as it is if anything fails. The target is a
// path as the operating system spells it.
ePackedFolder WritePak(const std::string& folder, const std::string& target);

}  // namespace xIo
