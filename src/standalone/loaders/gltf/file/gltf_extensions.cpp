#include "standalone/loaders/gltf/file/gltf_extensions.h"

#include <algorithm>
#include <array>

#include "standalone/loaders/gltf/draco/draco_decode.h"
#include "standalone/loaders/gltf/meshopt/meshopt_decode.h"

namespace standalone {
namespace {

constexpr std::array<std::string_view, 9> kKnown = {
    "EXT_mesh_gpu_instancing", "EXT_meshopt_compression",    "KHR_animation_pointer",
    "KHR_lights_punctual",     "KHR_draco_mesh_compression", "KHR_materials_variants",
    "KHR_mesh_quantization",   "KHR_node_visibility",        "KHR_texture_transform"};
constexpr std::array<std::string_view, 4> kPictures = {"KHR_texture_basisu", "EXT_texture_webp",
                                                       "EXT_texture_avif", "MSFT_texture_dds"};
constexpr std::string_view kMaterials = "KHR_materials_";

}  // namespace

bool IsKnownGltfExtension(std::string_view extension) {
    return std::ranges::find(kKnown, extension) != kKnown.end() || NamesGltfPicture(extension);
}

std::optional<ePhrase> ReasonAgainstGltfExtension(std::string_view extension) {
    if (!IsKnownGltfExtension(extension) && !extension.starts_with(kMaterials)) {
        return ePhrase::ExtensionUnknown;
    }
    const bool lacksLibrary = (extension == "EXT_meshopt_compression" && !KnowsMeshopt()) ||
                              (extension == "KHR_draco_mesh_compression" && !KnowsDraco());
    return lacksLibrary ? std::optional(ePhrase::ExtensionNotBuilt) : std::nullopt;
}

bool NamesGltfPicture(std::string_view extension) {
    return std::ranges::find(kPictures, extension) != kPictures.end();
}

}  // namespace standalone
