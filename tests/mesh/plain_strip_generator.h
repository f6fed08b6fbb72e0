#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The strip generator once more, slow and plain: every list is searched, every experiment is made and kept in
// full, nothing is remembered from one pass to the next. The fast one must give the same triangles in the
// same order and say the same lines.
namespace plain {

struct eStripResult {
    bool succeeded = false;
    std::vector<std::uint16_t> indices;
    std::string messages;
};

eStripResult GenerateStrips(const std::vector<std::uint16_t>& indices, int stripCacheSize);

}  // namespace plain
