#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// Vertices that one or more primitives of a mesh have in common.
struct eGltfVertexBlock {
    const tinygltf::Primitive* primitive = nullptr;  // the first one that has them
    std::string place;
    std::size_t countInFile = 0;
    std::vector<std::uint32_t> kept;  // numbers in the file of those that triangles use, in the mesh's order
    std::size_t first = 0;            // number of the first in the mesh

    // The accessor, -1 where the block lacks the attribute.
    int Attribute(const std::string& name) const;
};

// The triangles of one primitive.
struct eGltfFaceGroup {
    std::size_t block = 0;
    std::uint16_t materialId = 0;
    std::vector<std::uint32_t> corners;  // vertices by number in the mesh, three per triangle
};

// The vertices and triangles of a mesh of the file. Primitives that name the same accessors share a block;
// vertices that no triangle uses are left out.
class eGltfVertices {
public:
    // Without triangles there are no groups. Faults are told.
    eGltfVertices(eGltfImport& import, int mesh);

    std::size_t Count() const { return count; }
    const std::vector<eGltfVertexBlock>& Blocks() const { return blocks; }
    const std::vector<eGltfFaceGroup>& Groups() const { return groups; }

    // Calls take(vertex of the mesh, its `Width` numbers) for each vertex whose block has the attribute.
    template <std::size_t Width, class Take>
    void ForEach(const std::string& attribute, Take take) const {
        for (const eGltfVertexBlock& block : blocks) {
            if (const int accessor = block.Attribute(attribute); accessor >= 0) {
                ForEachOf<Width>(block, accessor, take);
            }
        }
    }
    // The same for an accessor with an element per vertex of the block.
    template <std::size_t Width, class Take>
    void ForEachOf(const eGltfVertexBlock& block, int accessor, Take take) const {
        if (!HasAllVertices(block, accessor)) {
            return;
        }
        const eGltfNumbers numbers = accessors.Numbers(accessor, Width, block.place);
        for (std::size_t i = 0; i < block.kept.size() && !numbers.IsEmpty(); ++i) {
            take(block.first + i, numbers.At<Width>(block.kept[i]));
        }
    }
    // False, with a problem, where the accessor has another number of elements than the block has vertices.
    bool HasAllVertices(const eGltfVertexBlock& block, int accessor) const;

private:
    using eBlockKey = std::pair<std::map<std::string, int>, std::vector<std::map<std::string, int>>>;

    void CollectTriangles(eGltfImport& import, int mesh);
    std::size_t BlockOf(const tinygltf::Primitive& primitive, const std::string& place);
    void NumberVertices();
    std::vector<std::uint32_t> NumbersOf(std::size_t block);

    const eGltfAccessors& accessors;
    eImportReport& report;
    std::map<eBlockKey, std::size_t> known;
    std::vector<eGltfVertexBlock> blocks;
    std::vector<eGltfFaceGroup> groups;
    std::size_t count = 0;
};

}  // namespace standalone
