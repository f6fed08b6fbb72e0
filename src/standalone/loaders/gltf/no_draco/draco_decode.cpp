#include "standalone/loaders/gltf/draco/draco_decode.h"

namespace standalone {

bool KnowsDraco() {
    return false;
}

std::optional<eDracoMesh> DecodeDraco(std::span<const std::uint8_t>, std::span<const eDracoAttribute>) {
    return std::nullopt;
}

}  // namespace standalone
