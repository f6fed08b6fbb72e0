#include "standalone/loaders/gltf/shapes/gltf_vertices.h"

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
        blocks.push_back({&primitive, place, {}, {}, 0});
        blocks.back().numbers.assign(accessors.Count(blocks.back().Attribute("POSITION")),
                                     eGltfVertexBlock::kUnused);
    }
    return entry->second;
}

// In the order of the file.
void eGltfVertices::NumberVertices() {
    constexpr std::uint32_t kUsed = 0;
    for (const eGltfFaceGroup& group : groups) {
        for (const std::uint32_t corner : group.corners) {
            blocks[group.block].numbers[corner] = kUsed;
        }
    }
    for (eGltfVertexBlock& block : blocks) {
        block.first = count;
        for (std::uint32_t v = 0; v < block.numbers.size(); ++v) {
            if (block.numbers[v] == kUsed) {
                block.numbers[v] = static_cast<std::uint32_t>(count++);
                block.kept.push_back(v);
            }
        }
    }
}

bool eGltfVertices::HasAllVertices(const eGltfVertexBlock& block, int accessor) const {
    if (accessors.Count(accessor) == block.numbers.size()) {
        return true;
    }
    report.Problem(block.place, eMessageId::GltfVertexCount, accessor, accessors.Count(accessor),
                   block.numbers.size());
    return false;
}

}  // namespace standalone
