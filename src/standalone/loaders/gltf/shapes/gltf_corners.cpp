#include "standalone/loaders/gltf/shapes/gltf_corners.h"

#include <algorithm>
#include <numeric>

namespace standalone {
namespace {

using eNumbers = std::vector<std::uint32_t>;

// Many meshes may refer to the same indices, so a small file can unfold to any number of triangles.
constexpr std::size_t kMostCorners = std::size_t{1} << 26;

eNumbers StripTriangles(const eNumbers& v) {
    eNumbers corners;
    corners.reserve(3 * v.size());
    for (std::size_t i = 0; i + 2 < v.size(); ++i) {
        const std::size_t odd = i % 2;
        corners.insert(corners.end(), {v[i], v[i + 1 + odd], v[i + 2 - odd]});
    }
    return corners;
}

eNumbers FanTriangles(const eNumbers& v) {
    eNumbers corners;
    corners.reserve(3 * v.size());
    for (std::size_t i = 0; i + 2 < v.size(); ++i) {
        corners.insert(corners.end(), {v[i + 1], v[i + 2], v[0]});
    }
    return corners;
}

eNumbers StripSegments(const eNumbers& v, bool isLoop) {
    eNumbers corners;
    corners.reserve(2 * v.size());
    for (std::size_t i = 0; i + 1 < v.size(); ++i) {
        corners.insert(corners.end(), {v[i], v[i + 1]});
    }
    if (isLoop && v.size() > 2) {
        corners.insert(corners.end(), {v.back(), v.front()});
    }
    return corners;
}

// What is left over behind the last whole triangle or segment is dropped, as the format wants.
eNumbers Whole(eNumbers v, std::size_t cornerCount) {
    v.resize(v.size() - v.size() % cornerCount);
    return v;
}

eNumbers VertexNumbers(const eGltfImport& import, const tinygltf::Primitive& primitive,
                       std::size_t vertexCount, const std::string& place) {
    if (primitive.indices >= 0) {
        return import.accessors.Wholes(primitive.indices, 1, place + "/indices");
    }
    eNumbers numbers(vertexCount);
    std::iota(numbers.begin(), numbers.end(), 0U);
    return numbers;
}

eNumbers CornersOf(int mode, eNumbers numbers) {
    switch (mode) {
        case TINYGLTF_MODE_TRIANGLE_STRIP:
            return StripTriangles(numbers);
        case TINYGLTF_MODE_TRIANGLE_FAN:
            return FanTriangles(numbers);
        case TINYGLTF_MODE_LINE:
            return Whole(std::move(numbers), 2);
        case TINYGLTF_MODE_LINE_LOOP:
        case TINYGLTF_MODE_LINE_STRIP:
            return StripSegments(numbers, mode == TINYGLTF_MODE_LINE_LOOP);
        default:
            return Whole(std::move(numbers), 3);
    }
}

}  // namespace

eGltfTopology TopologyOf(const tinygltf::Primitive& primitive) {
    switch (primitive.mode) {
        case TINYGLTF_MODE_POINTS:
            return eGltfTopology::Points;
        case TINYGLTF_MODE_LINE:
        case TINYGLTF_MODE_LINE_LOOP:
        case TINYGLTF_MODE_LINE_STRIP:
            return eGltfTopology::Lines;
        default:
            return eGltfTopology::Triangles;
    }
}

std::vector<std::uint32_t> GltfCorners(eGltfImport& import, const tinygltf::Primitive& primitive,
                                       const std::string& place) {
    const std::size_t vertexCount = import.accessors.Count(primitive.attributes.at("POSITION"));
    eNumbers numbers = VertexNumbers(import, primitive, vertexCount, place);
    const auto beyond = std::ranges::find_if(numbers, [&](std::uint32_t v) { return v >= vertexCount; });
    if (beyond != numbers.end()) {
        import.report.Problem(place + "/indices", eMessageId::GltfVertexIndex, *beyond,
                              beyond - numbers.begin(), vertexCount);
        return {};
    }
    import.cornerCount += numbers.size();
    if (import.cornerCount > kMostCorners) {
        import.report.Problem(place, eMessageId::GltfTriangles);
        return {};
    }
    return CornersOf(primitive.mode, std::move(numbers));
}

}  // namespace standalone
