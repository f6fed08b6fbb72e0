#include "standalone/loaders/gltf/shapes/gltf_lines.h"

#include <algorithm>

#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/gltf_axes.h"
#include "standalone/loaders/gltf/shapes/gltf_corners.h"
#include "standalone/loaders/shared/line_chains.h"

namespace standalone {

std::vector<eSpline> ReadGltfLines(eGltfImport& import, int mesh) {
    std::vector<host::Point3> ends;
    const auto& primitives = import.model.meshes[static_cast<std::size_t>(mesh)].primitives;
    for (std::size_t i = 0; i < primitives.size(); ++i) {
        const auto position = primitives[i].attributes.find("POSITION");
        if (TopologyOf(primitives[i]) != eGltfTopology::Lines || position == primitives[i].attributes.end()) {
            continue;
        }
        const std::string place = GltfPlace("meshes", mesh) + "/primitives/" + std::to_string(i);
        const eGltfNumbers points = import.accessors.Numbers(position->second, 3, place);
        const std::vector<std::uint32_t> corners = GltfCorners(import, primitives[i], place);
        if (!points.IsEmpty()) {
            std::ranges::transform(corners, std::back_inserter(ends), [&](std::uint32_t corner) {
                const std::array<float, 3> p = points.At<3>(corner);
                return ToHostPoint({p[0], p[1], p[2]});
            });
        }
    }
    return ChainSegments(ends);
}

}  // namespace standalone
