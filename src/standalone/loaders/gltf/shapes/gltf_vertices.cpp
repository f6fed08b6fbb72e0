#include "standalone/loaders/gltf/shapes/gltf_vertices.h"

#include <algorithm>
#include <limits>

#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/shapes/gltf_corners.h"

namespace standalone {
namespace {

bool IsOfTriangles(const tinygltf::Primitive& primitive) {
    return TopologyOf(primitive) == eGltfTopology::Triangles && primitive.attributes.contains("POSITION");
}

}  // namespace

int eGltfVertexBlock::Attribute(const std::string& name) const {
    const auto found = primitive->attributes.find(name);
    return found == primitive->attributes.end() ? -1 : found->second;
}

eGltfVertices::eGltfVertices(eGltfImport& import, int mesh)
    : accessors(import.accessors), report(import.report) {
    CollectTriangles(import, mesh);
    if (!report.HasProblems()) {
        NumberVertices();
    }
}

void eGltfVertices::CollectTriangles(eGltfImport& import, int mesh) {
    const std::vector<tinygltf::Primitive>& primitives =
        import.model.meshes[static_cast<std::size_t>(mesh)].primitives;
    std::size_t materialId = 0;
    for (std::size_t i = 0; i < primitives.size(); ++i) {
        if (!IsOfTriangles(primitives[i])) {
            continue;
        }
        const std::string place = GltfPlace("meshes", mesh) + "/primitives/" + std::to_string(i);
        if (materialId > std::numeric_limits<std::uint16_t>::max()) {
            report.Problem(place, eMessageId::GltfTooManyPrimitives);
            return;
        }
        groups.push_back({BlockOf(primitives[i], place), static_cast<std::uint16_t>(materialId++),
                          GltfCorners(import, primitives[i], place)});
    }
}

std::size_t eGltfVertices::BlockOf(const tinygltf::Primitive& primitive, const std::string& place) {
    const auto [entry, isNew] = known.try_emplace({primitive.attributes, primitive.targets}, blocks.size());
    if (isNew) {
        blocks.push_back({&primitive, place, accessors.Count(primitive.attributes.at("POSITION")), {}, 0});
    }
    return entry->second;
}

// In the order of the file.
void eGltfVertices::NumberVertices() {
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const std::vector<std::uint32_t> numbers = NumbersOf(i);
        const bool isAsInFile = blocks[i].first == 0 && blocks[i].kept.size() == numbers.size();
        for (eGltfFaceGroup& group : groups) {
            if (group.block == i && !isAsInFile) {
                std::ranges::transform(group.corners, group.corners.begin(),
                                       [&](std::uint32_t corner) { return numbers[corner]; });
            }
        }
    }
}

// The numbers of a block's vertices in the mesh, by number in the file; nothing is said of unused ones.
std::vector<std::uint32_t> eGltfVertices::NumbersOf(std::size_t block) {
    constexpr std::uint32_t kUnused = 0, kUsed = 1;
    eGltfVertexBlock& vertices = blocks[block];
    std::vector<std::uint32_t> numbers(vertices.countInFile, kUnused);
    for (const eGltfFaceGroup& group : groups) {
        if (group.block == block) {
            for (const std::uint32_t corner : group.corners) {
                numbers[corner] = kUsed;
            }
        }
    }
    vertices.first = count;
    vertices.kept.reserve(numbers.size() - static_cast<std::size_t>(std::ranges::count(numbers, kUnused)));
    for (std::uint32_t v = 0; v < numbers.size(); ++v) {
        if (numbers[v] == kUsed) {
            numbers[v] = static_cast<std::uint32_t>(count++);
            vertices.kept.push_back(v);
        }
    }
    return numbers;
}

bool eGltfVertices::HasAllVertices(const eGltfVertexBlock& block, int accessor) const {
    if (accessors.Count(accessor) == block.countInFile) {
        return true;
    }
    report.Problem(block.place, eMessageId::GltfVertexCount, accessor, accessors.Count(accessor),
                   block.countInFile);
    return false;
}

}  // namespace standalone
