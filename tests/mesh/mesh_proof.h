// Proves a written mesh against the scene that it came from, without the exporter's own lists in between.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "geometry/vertex_layout.h"
#include "mesh/file/mesh_reader.h"
#include "scene/properties/node_name.h"
#include "scene/triangle_mesh.h"
#include "standalone/objects/scene_node.h"
#include "standalone/standalone_host.h"

namespace mesh_test {

// Each visible triangle of the node's object must be in the mesh once, its corners within 1e-5 of the mesh's
// size, and show the same side. All at frame 0. `scene` is what the host was made of; its units must be so
// large that a millimetre, within which the weld joins vertices, is nothing beside the mesh.
class eMeshProof {
public:
    eMeshProof(const eFileMesh& ownMesh, host::INode& ownNode, const standalone::eSceneData& scene)
        : mesh(ownMesh),
          node(ownNode),
          objectToWorld(node.GetObjTMAfterWSM(0)),
          boneToWorld(NoScale(node.GetNodeTM(0))),
          metres(static_cast<float>(scene.unitMetres)) {
        const host::Point3 width = mesh.bounds.Width();
        reach = 1e-5F * std::max({width.x, width.y, width.z});
        CollectTriangles();
        for (const eFileSubMesh& subMesh : mesh.subMeshes) {
            for (std::size_t i = 0; i < subMesh.triangleCount; ++i) {
                ProveTriangle(subMesh, subMesh.firstTriangle + i);
            }
        }
        for (const auto& [place, triangle] : triangles) {
            if (!triangle.isTaken && !IsFolded(triangle) && !IsRepeated(triangle)) {
                Fault("a triangle of the scene is missing");
            }
        }
    }

    std::size_t sceneTriangles = 0;
    std::vector<std::string> faults;  // everything that should not be

private:
    using eCorners = std::array<host::Point3, 3>;

    // A visible triangle of the scene.
    struct eTriangle {
        eCorners corners;          // metres, bone space
        host::Point3 worldNormal;  // of the side that is visible
        bool isTaken = false;
    };

    void Fault(const std::string& fault) { faults.push_back(mesh.name + ": " + fault); }

    host::Point3 WorldFromBone(const host::Point3& p) const { return (p * (1 / metres)) * boneToWorld; }

    // Triangles are looked for by the sum of their corners' coordinates.
    static float PlaceOf(const eCorners& corners) {
        float place = 0;
        for (const host::Point3& p : corners) {
            place += p.x + p.y + p.z;
        }
        return place;
    }

    // The object below all modifiers, as triangles. A normal goes through the transposed inverse: a mirror
    // does not turn it round.
    void CollectTriangles() {
        host::Object* object = node.GetObjectRef();
        while (auto* stack = dynamic_cast<host::IDerivedObject*>(object)) {
            object = stack->GetObjRef();
        }
        const host::Mesh& rest =
            dynamic_cast<host::TriObject&>(*object->ConvertToType(0, host::kTriObjectClass)).GetMesh();
        const host::Matrix3 objectToBone = objectToWorld * Inverse(boneToWorld),
                            inverse = Inverse(objectToWorld);
        for (const host::Face& face : rest.faces) {
            if (face.Hidden()) {
                continue;
            }
            eTriangle triangle;
            for (std::size_t i = 0; i < 3; ++i) {
                triangle.corners[i] = (rest.verts[face.v[i]] * objectToBone) * metres;
            }
            const host::Point3& first = rest.verts[face.v[0]];
            const host::Point3 n = CrossProd(rest.verts[face.v[1]] - first, rest.verts[face.v[2]] - first);
            triangle.worldNormal = {DotProd(inverse.GetRow(0), n), DotProd(inverse.GetRow(1), n),
                                    DotProd(inverse.GetRow(2), n)};
            triangles.emplace(PlaceOf(triangle.corners), triangle);
        }
        sceneTriangles = triangles.size();
    }

    void ProveTriangle(const eFileSubMesh& subMesh, std::size_t number) {
        eCorners corners;  // in the scene's winding
        for (std::size_t i = 0; i < 3; ++i) {
            corners[i] = mesh.Vertex(subMesh, mesh.indices[3 * number + 2 - i]).position;
        }
        eTriangle* const triangle = Find(corners);
        if (triangle == nullptr) {
            return Fault("a triangle of the file is not in the scene");
        }
        triangle->isTaken = true;
        ProveSide(*triangle, corners);
    }

    // The triangle of the scene that is still free within reach; the corners may meet the other way round.
    eTriangle* Find(const eCorners& corners) {
        constexpr std::array<std::array<std::size_t, 3>, 6> kTurnings{
            {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}, {1, 0, 2}, {0, 2, 1}}};
        const float place = PlaceOf(corners), far = 9 * reach + 1e-5F * std::fabs(place);
        const auto end = triangles.upper_bound(place + far);
        for (auto at = triangles.lower_bound(place - far); at != end; ++at) {
            for (const auto& turning : kTurnings) {
                const eCorners& others = at->second.corners;
                const auto isNear = [&](std::size_t i) {
                    return Length(corners[i] - others[turning[i]]) <= reach;
                };
                if (!at->second.isTaken && isNear(0) && isNear(1) && isNear(2)) {
                    return &at->second;
                }
            }
        }
        return nullptr;
    }

    void ProveSide(const eTriangle& triangle, const eCorners& corners) {
        const host::Point3 first = WorldFromBone(corners[0]);
        const host::Point3 side =
            CrossProd(WorldFromBone(corners[1]) - first, WorldFromBone(corners[2]) - first);
        if (!IsFolded(triangle) && DotProd(Normalize(side), Normalize(triangle.worldNormal)) < 0) {
            Fault("a triangle turns its back");
        }
    }

    // Without a side worth the name.
    bool IsFolded(const eTriangle& triangle) const {
        const auto& [a, b, c] = triangle.corners;
        const float longest = std::max({Length(b - a), Length(c - b), Length(a - c)});
        return Length(CrossProd(b - a, c - a)) <= 2 * reach * longest;
    }

    bool IsRepeated(const eTriangle& triangle) const {
        const auto [begin, end] = triangles.equal_range(PlaceOf(triangle.corners));
        return std::any_of(begin, end, [&](const auto& other) {
            return &other.second != &triangle && other.second.corners == triangle.corners;
        });
    }

    const eFileMesh& mesh;
    host::INode& node;
    host::Matrix3 objectToWorld, boneToWorld;
    float metres;     // per scene unit
    float reach = 0;  // metres
    std::multimap<float, eTriangle> triangles;
};

}  // namespace mesh_test
