#include "volume/convexity.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

constexpr float kCosineTolerance = 0.01F;

// The vertices as three arrays, so that the pass over them runs on several at once.
struct eVertexArrays {
    std::vector<float> x, y, z;

    explicit eVertexArrays(const std::vector<host::Point3>& verts) {
        for (std::vector<float>* array : {&x, &y, &z}) {
            array->reserve(verts.size());
        }
        for (const host::Point3& p : verts) {
            x.push_back(p.x);
            y.push_back(p.y);
            z.push_back(p.z);
        }
    }
};

struct eFacePlane {
    host::Point3 origin;
    host::Point3 normal;
};

eFacePlane PlaneOf(const host::Mesh& mesh, const host::Face& face) {
    const host::Point3& p0 = mesh.verts[face.v[0]];
    const host::Point3 side1 = host::Normalize(mesh.verts[face.v[1]] - p0);
    const host::Point3 side2 = host::Normalize(mesh.verts[face.v[2]] - p0);
    return {p0, host::Normalize(host::CrossProd(side1, side2))};
}

// True if some vertex of the block may fail the exact test. The square of the cosine is compared with a bound
// a little below that of the tolerance, so that rounding never hides a failure; where the squares may have
// run out of range (a distance below 1e-15) being above the plane is enough.
bool ComesNear(const eVertexArrays& arrays, std::size_t begin, std::size_t end, const eFacePlane& plane) {
    constexpr float kNearSquare = 0.98F * kCosineTolerance * kCosineTolerance;
    constexpr float kTinySquare = 1e-30F;
    const host::Point3 p = plane.origin;
    const host::Point3 n = plane.normal;
    int near = 0;
    for (std::size_t i = begin; i < end; ++i) {
        const float x = arrays.x[i] - p.x;
        const float y = arrays.y[i] - p.y;
        const float z = arrays.z[i] - p.z;
        const float height = x * n.x + y * n.y + z * n.z;
        const float square = x * x + y * y + z * z;
        near |= static_cast<int>(height > 0) & (static_cast<int>(height * height > kNearSquare * square) |
                                                static_cast<int>(square < kTinySquare));
    }
    return near != 0;
}

bool StandsAbove(const host::Mesh& mesh, const host::Face& face, const eFacePlane& plane,
                 std::size_t vertex) {
    if (vertex == face.v[0] || vertex == face.v[1] || vertex == face.v[2]) {
        return false;
    }
    const host::Point3 direction = host::Normalize(mesh.verts[vertex] - plane.origin);
    return host::DotProd(direction, plane.normal) > kCosineTolerance;
}

}  // namespace

bool IsConvex(const host::Mesh& mesh) {
    constexpr std::size_t kBlock = 256;
    const eVertexArrays arrays(mesh.verts);
    const std::size_t count = mesh.verts.size();
    for (const host::Face& face : mesh.faces) {
        const eFacePlane plane = PlaneOf(mesh, face);
        for (std::size_t begin = 0; begin < count; begin += kBlock) {
            const std::size_t end = std::min(begin + kBlock, count);
            if (!ComesNear(arrays, begin, end, plane)) {
                continue;
            }
            for (std::size_t vertex = begin; vertex < end; ++vertex) {
                if (StandsAbove(mesh, face, plane, vertex)) {
                    return false;
                }
            }
        }
    }
    return true;
}
