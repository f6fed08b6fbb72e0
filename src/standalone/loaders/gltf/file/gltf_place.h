#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace standalone {

// The JSON path of an entry of a list: /nodes/3.
inline std::string GltfPlace(std::string_view list, std::size_t index) {
    return "/" + std::string(list) + "/" + std::to_string(index);
}
inline std::string GltfPlace(std::string_view list, int index) {
    return GltfPlace(list, static_cast<std::size_t>(index));
}

}  // namespace standalone
