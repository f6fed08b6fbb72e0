#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace standalone {

// A buffer view as EXT_meshopt_compression has it.
struct eMeshoptStream {
    std::span<const std::uint8_t> bytes;
    std::size_t count = 0;    // elements
    std::size_t stride = 0;   // bytes of an element, unpacked
    std::string_view mode;    // "ATTRIBUTES", "TRIANGLES", "INDICES"
    std::string_view filter;  // "NONE", "OCTAHEDRAL", "QUATERNION", "EXPONENTIAL"
};

// Whether this program was built with the library that DecodeMeshopt needs.
bool KnowsMeshopt();

// The elements, one behind the other. Nothing where the stream is broken, or tells more elements than its
// bytes could ever stand for.
std::optional<std::vector<std::uint8_t>> DecodeMeshopt(const eMeshoptStream& stream);

}  // namespace standalone
