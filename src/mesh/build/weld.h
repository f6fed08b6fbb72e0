#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "geometry/export_vertex.h"
#include "mesh/build/vertex_grid.h"

// The unique vertices of a mesh, numbered in the order in which they first came.
//
// The order of the vertices (vertex_order.h) is only approximately transitive, so which of several near
// vertices a corner becomes depends on how it is looked for, and the search is therefore part of the result:
//  - A corner that equals a kept vertex to the last bit is that vertex.
//  - Any other corner goes down a search tree from the root, to the left where it is less, to the right where
//    it is greater. The first node that is neither is its vertex; there is no look at other neighbours.
//  - A corner for which there is none is kept, as a new leaf where the search fell off.
//  - The tree is balanced by height (Adelson-Velsky and Landis, 1962): going back up from a new leaf, the
//    first node whose subtrees differ by two in height is put right by a single or a double rotation.
//
// The tree decides nothing as long as no corner is one with a vertex that it does not equal to the last bit:
// it is made when the first such corner comes, of all vertices in the order in which they were kept, and few
// meshes that were welded before ever have one. Until then a grid shows that a corner is new, which costs one
// look instead of some fifteen. A node of the tree is 16 bytes: the position, which decides nearly every
// comparison, and two 16-bit children. Beside it corners that have come before stand in a hash table.
class eVertexWeld {
public:
    // A mesh may have one vertex less; the last one that is kept shows that there are too many.
    static constexpr std::size_t kMostVertices = 65535;

    // The number of no vertex.
    static constexpr std::uint16_t kNone = 0xFFFF;

    // How many corners will come, and how many positions they have at most; beyond either there is no room.
    eVertexWeld(std::size_t corners, std::size_t positions);

    // The number of the vertex. Once kMostVertices have been kept, a corner that none of them fits gets the
    // number 0 and is dropped: the mesh can't be written anyway. Constant for a corner that has come before
    // and for a mesh without near vertices, else logarithmic.
    std::uint16_t FindOrAdd(const eExportVertex& corner);

    const std::vector<eExportVertex>& Vertices() const { return vertices; }
    std::vector<eExportVertex> TakeVertices() { return std::move(vertices); }

private:
    struct eNode {
        host::Point3 position;
        std::uint16_t children[2] = {kNone, kNone};  // less, greater
    };
    // One step of the way down: from which node, and to which child.
    struct eStep {
        std::uint16_t node;
        std::uint16_t side;
    };

    // No path is longer: a tree of height h, balanced by height, has at least F(h + 2) - 1 nodes (F:
    // Fibonacci).
    static constexpr std::size_t kMostLevels = 24;
    struct ePath {
        eStep steps[kMostLevels];
        int depth = 0;
    };

    std::optional<std::uint16_t> FindOrAddApart(const eExportVertex& corner);
    std::uint16_t FindOrAddInTree(const eExportVertex& corner);
    void MakeTree();
    std::uint32_t& SlotOf(const eExportVertex& corner, std::uint32_t& tag);
    std::uint16_t Search(const eExportVertex& corner, ePath& path) const;
    std::uint16_t AddNode(const host::Point3& position, const ePath& path);
    void Rebalance(const ePath& path);
    std::uint16_t Rotate(std::uint16_t top, std::uint16_t heavySide);
    std::uint16_t RotateOnce(std::uint16_t top, std::uint16_t heavySide);

    std::size_t most;  // vertices
    std::vector<eExportVertex> vertices;
    std::optional<eVertexGrid> grid;    // of the vertices, until there is a tree
    std::vector<std::uint32_t> slots;   // open addressing: upper half of the hash, number; a power of two
    std::vector<eNode> nodes;           // by number, parallel to `vertices`
    std::vector<std::int8_t> balances;  // by number: height of the greater side less that of the other
    std::uint16_t root = kNone;
};
