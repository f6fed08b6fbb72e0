#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "mesh/file/mesh_reader.h"
#include "verify/verified_scene.h"
#include "written/exact_space.h"

namespace verify {

// A triangle of a mesh file, its corners in the order of the scene's.
struct eFileTriangle {
    std::array<eExportVertex, 3> corners;
    std::array<int, 3> vertices{};  // of the file
    const eFileSubMesh* subMesh = nullptr;
    int owner = -1;  // the triangle of the scene that it has been found for

    bool IsTaken() const { return owner >= 0; }
};

// Triangles of the file by the place of their middle.
class eTriangleGrid {
public:
    eTriangleGrid(std::vector<eFileTriangle>& triangles, double reach)
        : triangles_(triangles), cell_(2 * reach) {
        for (std::size_t i = 0; i < triangles.size(); ++i) {
            cells_[KeyOf(CellOf(MiddleOf(triangles[i]), 0.5))].push_back(i);
        }
    }

    // Visits all whose middle lies within the reach of the point along each axis, and some more.
    template <class Visit>
    void Near(const eVector& middle, Visit visit) {
        const std::array<std::int64_t, 3> low = CellOf(middle, 0);
        for (int i = 0; i < 8; ++i) {
            const auto found =
                cells_.find(KeyOf({low[0] + (i & 1), low[1] + (i >> 1 & 1), low[2] + (i >> 2)}));
            if (found != cells_.end()) {
                std::ranges::for_each(found->second, [&](std::size_t n) { visit(triangles_[n]); });
            }
        }
    }

private:
    static eVector MiddleOf(const eFileTriangle& triangle) {
        eVector middle{};
        for (const eExportVertex& corner : triangle.corners) {
            for (int i = 0; i < 3; ++i) {
                middle[static_cast<std::size_t>(i)] += corner.position[i] / 3.0;
            }
        }
        return middle;
    }
    std::array<std::int64_t, 3> CellOf(const eVector& p, double shift) const {
        std::array<std::int64_t, 3> cell{};
        for (std::size_t i = 0; i < 3; ++i) {
            cell[i] = static_cast<std::int64_t>(std::floor(std::clamp(p[i] / cell_ + shift, -9e17, 9e17)));
        }
        return cell;
    }
    static std::uint64_t KeyOf(const std::array<std::int64_t, 3>& cell) {
        std::uint64_t key = 0;
        for (const std::int64_t part : cell) {
            key = (key ^ static_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15U;
            key ^= key >> 29;
        }
        return key;
    }

    std::vector<eFileTriangle>& triangles_;
    double cell_;
    std::unordered_map<std::uint64_t, std::vector<std::size_t>> cells_;
};

}  // namespace verify
