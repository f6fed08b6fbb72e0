#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "geometry/export_vertex.h"
#include "mesh/build/vertex_order.h"

// The rule of the weld as plainly as it can be said.
class ePlainWeld {
public:
    std::uint16_t FindOrAdd(const eExportVertex& corner) {
        const std::string bytes(reinterpret_cast<const char*>(&corner), sizeof corner);
        if (const auto same = identical.find(bytes); same != identical.end()) {
            return same->second;
        }
        const std::size_t before = vertices.size();
        const std::uint16_t number = FindOrAdd(root, corner);
        if (vertices.size() != before) {
            identical[bytes] = number;
        }
        return number;
    }

    std::vector<eExportVertex> vertices;

private:
    struct eNode {
        std::uint16_t number = 0;
        int height = 1;
        std::unique_ptr<eNode> less, greater;
    };
    using eTree = std::unique_ptr<eNode>;

    static int Height(const eTree& tree) { return tree == nullptr ? 0 : tree->height; }
    static void Measure(eNode& node) { node.height = 1 + std::max(Height(node.less), Height(node.greater)); }
    static int Lean(const eTree& tree) { return Height(tree->greater) - Height(tree->less); }

    static void Raise(eTree& tree, eTree eNode::*child, eTree eNode::*other) {
        eTree risen = std::move(tree.get()->*child);
        tree.get()->*child = std::move(risen.get()->*other);
        Measure(*tree);
        risen.get()->*other = std::move(tree);
        Measure(*risen);
        tree = std::move(risen);
    }

    std::uint16_t FindOrAdd(eTree& tree, const eExportVertex& vertex) {
        if (tree == nullptr) {
            tree = std::make_unique<eNode>();
            tree->number = static_cast<std::uint16_t>(vertices.size());
            vertices.push_back(vertex);
            return tree->number;
        }
        const eExportVertex& here = vertices[tree->number];
        if (!VertexLess(vertex, here) && !VertexLess(here, vertex)) {
            return tree->number;
        }
        const std::uint16_t number = FindOrAdd(VertexLess(vertex, here) ? tree->less : tree->greater, vertex);
        Measure(*tree);
        if (Lean(tree) == 2) {
            if (Lean(tree->greater) < 0) {
                Raise(tree->greater, &eNode::less, &eNode::greater);
            }
            Raise(tree, &eNode::greater, &eNode::less);
        } else if (Lean(tree) == -2) {
            if (Lean(tree->less) > 0) {
                Raise(tree->less, &eNode::greater, &eNode::less);
            }
            Raise(tree, &eNode::less, &eNode::greater);
        }
        return number;
    }

    eTree root;
    std::map<std::string, std::uint16_t> identical;
};
