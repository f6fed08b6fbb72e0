#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "standalone/loaders/assimp/assimp_import.h"

namespace standalone {

// The parts of a node's mesh that have triangles, in the file's order: one per material.
std::vector<const aiMesh*> TriangleMeshes(const eAssimpImport& import, const eAssimpNode& node);

// The vertices of a node's mesh. The library has one per corner of a face; those at one place that are bound
// to the same bones and moved by the same morph targets are one vertex again.
class eAssimpVertices {
public:
    explicit eAssimpVertices(const std::vector<const aiMesh*>& meshes);

    struct eVertex {
        std::size_t mesh = 0;  // the first that has it, and its number there
        std::uint32_t number = 0;
    };

    const std::vector<eVertex>& All() const { return vertices; }
    std::uint32_t NumberOf(std::size_t mesh, std::uint32_t corner) const { return numbers[mesh][corner]; }

private:
    std::vector<eVertex> vertices;
    std::vector<std::vector<std::uint32_t>> numbers;  // by mesh and number there
};

// A table of points in which equal ones have one number.
class ePointTable {
public:
    std::uint32_t NumberOf(const host::Point3& point);

    std::vector<host::Point3> points;

private:
    struct eHash {
        std::size_t operator()(const host::Point3& point) const;
    };
    std::unordered_map<host::Point3, std::uint32_t, eHash> numbers;
};

}  // namespace standalone
