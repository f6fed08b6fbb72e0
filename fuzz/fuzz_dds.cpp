// Any bytes as a texture file: whatever levels are found are decoded within the bytes that are there.
#include <cstddef>
#include <cstdint>

#include "texture/dds_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const eDdsFile dds = ReadDds({data, size});
    for (std::size_t level = 0; level < dds.levels.size(); level++) {
        DecodeDdsLevel({data, size}, dds, level);
    }
    return 0;
}
