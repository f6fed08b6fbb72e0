#include "standalone/loaders/gltf/meshopt/meshopt_decode.h"

namespace standalone {

bool KnowsMeshopt() {
    return false;
}

std::optional<std::vector<std::uint8_t>> DecodeMeshopt(const eMeshoptStream&) {
    return std::nullopt;
}

}  // namespace standalone
