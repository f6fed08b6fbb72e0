#include "mesh/mesh_proof.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "mesh/sub_mesh.h"
#include "mesh/vertex_layout.h"
#include "scene/find_skin.h"
#include "scene/node_name.h"
#include "scene/triangle_mesh.h"
#include "standalone/scene_node.h"

namespace mesh_test {

namespace {

using host::Matrix3;
using host::Point3;

constexpr float kWeldReach = 0.00175F;  // a millimetre in all three components, and a little

// The object below all modifiers, as triangles.
host::Mesh RestMesh(const host::INode& node, host::TimeValue time) {
    host::Object* object = node.GetObjectRef();
    while (auto* stack = dynamic_cast<host::IDerivedObject*>(object)) {
        object = stack->GetObjRef();
    }
    return dynamic_cast<host::TriObject&>(*object->ConvertToType(time, host::kTriObjectClass)).GetMesh();
}

// How the node's object and its bone stand in the world.
struct eSpaces {
    Matrix3 objectToWorld;
    Matrix3 boneToWorld;
    float metres;  // per scene unit

    Point3 BoneFromObject(const Point3& p) const {
        return (p * objectToWorld * Inverse(boneToWorld)) * metres;
    }
    Point3 WorldFromBone(const Point3& p) const { return (p * (1 / metres)) * boneToWorld; }
    // Of a normal, by the transposed inverse: a mirror does not turn it round.
    Point3 WorldNormal(const Point3& n) const {
        const Matrix3 inverse = Inverse(objectToWorld);
        return {DotProd(inverse.GetRow(0), n), DotProd(inverse.GetRow(1), n), DotProd(inverse.GetRow(2), n)};
    }
};

// A visible triangle of the scene.
struct eSceneTriangle {
    std::array<std::uint32_t, 3> vertices;  // of the object, in the host's order
    std::array<Point3, 3> corners;          // metres, bone space
    Point3 worldNormal;                     // of the side that is visible
    bool isTaken = false;
};

// The ways in which the corners of two triangles can meet: the same way round, then the other way.
constexpr std::array<std::array<int, 3>, 6> kTurnings{
    {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}, {1, 0, 2}, {0, 2, 1}}};

float DistanceOf(const std::array<Point3, 3>& a, const std::array<Point3, 3>& b,
                 const std::array<int, 3>& turning) {
    float distance = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        distance = std::max(distance, Length(a[i] - b[static_cast<std::size_t>(turning[i])]));
    }
    return distance;
}

class eProver {
public:
    eProver(const eFileMesh& ownMesh, host::INode& ownNode, const standalone::eSceneData& ownScene,
            host::TimeValue ownTime)
        : mesh(ownMesh),
          node(ownNode),
          scene(ownScene),
          time(ownTime),
          rest(RestMesh(node, time)),
          spaces{node.GetObjTMAfterWSM(time), NoScale(node.GetNodeTM(time)),
                 static_cast<float>(scene.unitMetres)} {
        for (const host::Face& face : rest.faces) {
            if (!face.Hidden()) {
                AddTriangle(face);
            }
        }
        const Point3 width = mesh.bounds.Width();
        exactReach = 1e-5F * std::max({width.x, width.y, width.z, 1e-6F});
    }

    eProof Prove() {
        if (mesh.skinned) {
            PrepareSkin();
        }
        // What is exact goes first, so that a bent triangle does not take its place.
        std::vector<eFileTriangle> bent;
        for (const eFileSubMesh& subMesh : mesh.subMeshes) {
            for (std::size_t i = 0; i < subMesh.triangleCount; ++i) {
                const eFileTriangle triangle =
                    Triangle(subMesh, 3 * (std::size_t{subMesh.firstTriangle} + i));
                if (!ProveExactly(subMesh, triangle)) {
                    bent.push_back(triangle);
                }
            }
        }
        for (const eFileTriangle& triangle : bent) {
            ProveBent(triangle);
        }
        for (const auto& [place, triangle] : triangles) {
            if (!triangle.isTaken && !IsFolded(triangle) && !IsRepeated(triangle)) {
                Fault("a triangle of the scene is missing");
            }
            proof.lost += triangle.isTaken ? 0 : 1;
        }
        return std::move(proof);
    }

private:
    void Fault(const std::string& fault) { proof.faults.push_back(mesh.name + ": " + fault); }

    // Triangles are looked for by the sum of their corners' coordinates.
    static float PlaceOf(const std::array<Point3, 3>& corners) {
        float place = 0;
        for (const Point3& p : corners) {
            place += p.x + p.y + p.z;
        }
        return place;
    }

    void AddTriangle(const host::Face& face) {
        eSceneTriangle triangle;
        Point3 object[3];
        for (std::size_t i = 0; i < 3; ++i) {
            triangle.vertices[i] = face.v[i];
            object[i] = rest.verts[face.v[i]];
            triangle.corners[i] = spaces.BoneFromObject(object[i]);
        }
        triangle.worldNormal = spaces.WorldNormal(CrossProd(object[1] - object[0], object[2] - object[0]));
        triangles.emplace(PlaceOf(triangle.corners), triangle);
    }

    // A triangle of the file in the scene's winding.
    struct eFileTriangle {
        std::array<eExportVertex, 3> vertices;
        std::array<Point3, 3> corners;
    };

    eFileTriangle Triangle(const eFileSubMesh& subMesh, std::size_t first) const {
        eFileTriangle triangle;
        for (std::size_t i = 0; i < 3; ++i) {
            triangle.vertices[i] = mesh.Vertex(subMesh, mesh.indices[first + 2 - i]);
            triangle.corners[i] = triangle.vertices[i].position;
        }
        return triangle;
    }

    // The triangle of the scene that is still free and nearest within reach, and how the corners meet.
    struct eMatch {
        eSceneTriangle* triangle = nullptr;
        std::array<int, 3> turning{};
        float distance = 0;
    };

    eMatch Find(const std::array<Point3, 3>& corners, float reach) {
        eMatch best{.triangle = nullptr, .turning = {}, .distance = reach};
        const float place = PlaceOf(corners);
        const float far = 9 * reach + 1e-5F * std::fabs(place);
        for (auto at = triangles.lower_bound(place - far); at != triangles.end() && at->first <= place + far;
             ++at) {
            if (at->second.isTaken) {
                continue;
            }
            for (const std::array<int, 3>& turning : kTurnings) {
                const float distance = DistanceOf(corners, at->second.corners, turning);
                if (distance <= best.distance && (best.triangle == nullptr || distance < best.distance)) {
                    best = {&at->second, turning, distance};
                }
            }
        }
        return best;
    }

    bool ProveExactly(const eFileSubMesh& subMesh, const eFileTriangle& triangle) {
        const eMatch match = Find(triangle.corners, exactReach);
        if (match.triangle == nullptr) {
            return false;
        }
        match.triangle->isTaken = true;
        ++proof.exact;
        ProveSide(*match.triangle, triangle.corners);
        for (std::size_t i = 0; mesh.skinned && i < 3; ++i) {
            const auto corner = static_cast<std::size_t>(match.turning[i]);
            ProveSkin(subMesh, triangle.vertices[i], match.triangle->vertices[corner]);
        }
        return true;
    }

    void ProveBent(const eFileTriangle& triangle) {
        const eMatch match = Find(triangle.corners, kWeldReach);
        if (match.triangle == nullptr) {
            return Fault("a triangle of the file is not in the scene");
        }
        match.triangle->isTaken = true;
        ++proof.welded;
        ProveSide(*match.triangle, triangle.corners);
    }

    void ProveSide(const eSceneTriangle& triangle, const std::array<Point3, 3>& corners) {
        std::array<Point3, 3> world;
        for (std::size_t i = 0; i < 3; ++i) {
            world[i] = spaces.WorldFromBone(corners[i]);
        }
        const Point3 side = Normalize(CrossProd(world[1] - world[0], world[2] - world[0]));
        // A sliver that the weld has bent has no side worth the name.
        if (!IsFolded(triangle) && DotProd(side, Normalize(triangle.worldNormal)) < 0) {
            Fault("a triangle turns its back");
        }
    }

    // Narrow enough for the weld to make its corners one, or to turn it over.
    static bool IsFolded(const eSceneTriangle& triangle) {
        const auto& [a, b, c] = triangle.corners;
        const float longest = std::max({Length(b - a), Length(c - b), Length(a - c)});
        const float height = longest > 0 ? Length(CrossProd(b - a, c - a)) / longest : 0;
        return height <= 2 * kWeldReach;
    }

    bool IsRepeated(const eSceneTriangle& triangle) const {
        const auto [begin, end] = triangles.equal_range(PlaceOf(triangle.corners));
        return std::any_of(begin, end, [&](const auto& other) {
            return &other.second != &triangle && other.second.corners == triangle.corners;
        });
    }

    void PrepareSkin() {
        const auto& place = dynamic_cast<standalone::eSceneNode&>(node);
        const standalone::eObjectData& object = scene.objects[static_cast<std::size_t>(
            scene.nodes[static_cast<std::size_t>(place.Index())].object)];
        const auto& skin = std::get<standalone::eSkinModifier>(object.modifiers.front());
        host::ISkin& bones = *FindSkin(node)->GetInterface(host::Modifier::kSkinInterface);
        weights = bones.GetContextInterface(node);
        const auto bindTime = static_cast<host::TimeValue>(skin.bindFrame * scene.frameTicks);
        for (int i = 0; i < bones.GetNumBones(); ++i) {
            const host::INode& bone = *bones.GetBone(i);
            const auto number = static_cast<std::size_t>(i);
            if (mesh.bones.at(number) != CleanNodeName(bone.GetName(), true)) {
                Fault("a bone of the table is another one");
            }
            const Matrix3 bind = skin.bindMatrices.empty()
                                     ? node.GetObjTMAfterWSM(bindTime) * Inverse(bone.GetNodeTM(bindTime))
                                     : skin.bindMatrices[number];
            objectToWorld.push_back(bind * bone.GetNodeTM(time));
        }
        deformed = eTriangleMesh(node, time).Mesh();
    }

    void ProveSkin(const eFileSubMesh& subMesh, const eExportVertex& vertex, std::uint32_t hostVertex) {
        const int influences = weights->GetNumAssignedBones(static_cast<int>(hostVertex));
        if (influences == 0 || influences > 3) {
            return;  // without bones, or with more than the file has
        }
        const Point3 object = spaces.WorldFromBone(vertex.position) * Inverse(spaces.objectToWorld);
        const int stored = WeightCount(subMesh.format);
        Point3 landed;
        float left = 1;
        for (int k = 0; k <= stored; ++k) {
            const float weight = k < stored ? vertex.weights[k] : left;
            const int bone = subMesh.palette[vertex.boneIndices[k]];
            left -= weight;
            if (bone > 0) {
                landed += (object * objectToWorld[static_cast<std::size_t>(bone - 1)]) * weight;
            } else if (std::fabs(weight) > 1e-5F) {
                Fault("a weight follows no bone");
            }
        }
        const Point3 expected = deformed.verts[hostVertex] * spaces.objectToWorld;
        if (Length(landed - expected) * spaces.metres > 100 * exactReach) {
            Fault("a skinned vertex lands elsewhere");
        }
        ++proof.skinnedCorners;
    }

    const eFileMesh& mesh;
    host::INode& node;
    const standalone::eSceneData& scene;
    host::TimeValue time;
    host::Mesh rest;
    eSpaces spaces;
    float exactReach = 0;
    std::multimap<float, eSceneTriangle> triangles;
    const host::ISkinContextData* weights = nullptr;
    std::vector<Matrix3> objectToWorld;  // by bone of the skin, from the rest pose to where the bone has it
    host::Mesh deformed;
    eProof proof;
};

}  // namespace

eProof ProveMesh(const eFileMesh& mesh, host::INode& node, const standalone::eSceneData& scene,
                 host::TimeValue time) {
    return eProver(mesh, node, scene, time).Prove();
}

}  // namespace mesh_test
