#include "standalone/loaders/gltf/shapes/gltf_mesh_object.h"

#include <algorithm>
#include <map>

#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/shapes/gltf_corners.h"
#include "standalone/loaders/gltf/shapes/gltf_lines.h"
#include "standalone/loaders/gltf/shapes/gltf_mesh.h"

namespace standalone {
namespace {

using ePoints = std::vector<host::Point3>;

// A key holds all the mesh's vertices.
constexpr std::size_t kMostKeyPoints = std::size_t{1} << 26;

bool HasTopology(const tinygltf::Mesh& mesh, eGltfTopology topology) {
    return std::ranges::any_of(mesh.primitives, [&](const tinygltf::Primitive& primitive) {
        return TopologyOf(primitive) == topology && primitive.attributes.contains("POSITION");
    });
}

void NoticeLosses(eGltfImport& import, const tinygltf::Mesh& mesh, bool hasTriangles) {
    if (HasTopology(mesh, eGltfTopology::Points)) {
        import.report.CannotShow(ePhrase::LostPoints);
    }
    if (hasTriangles && HasTopology(mesh, eGltfTopology::Lines)) {
        import.report.CannotShow(ePhrase::LostLines);
    }
    if (std::ranges::any_of(mesh.primitives, [](const tinygltf::Primitive& primitive) {
            return !primitive.attributes.contains("POSITION");
        })) {
        import.report.CannotShow(ePhrase::LostPlaceless);
    }
}

ePoints Morphed(const ePoints& rest, const std::vector<ePoints>& targets, std::span<const float> weights) {
    ePoints points = rest;
    for (std::size_t target = 0; target < targets.size(); ++target) {
        for (std::size_t v = 0; v < points.size() && weights[target] != 0; ++v) {
            points[v] += targets[target][v] * weights[target];
        }
    }
    return points;
}

// Weights move linearly between the keys of their curve, and so do the vertices.
void MorphMesh(eGltfImport& import, const eGltfVertices& vertices, const eGltfMeshUse& use,
               const std::string& place, eMeshObject& object) {
    const std::vector<ePoints> targets = ReadGltfTargets(import.report, vertices);
    if (targets.size() != use.weights.size() ||
        (use.motion != nullptr && use.motion->width != targets.size())) {
        import.report.Problem(place, eMessageId::GltfMorphWeights);
        return;
    }
    const ePoints rest = object.mesh.verts;
    object.mesh.verts = Morphed(rest, targets, use.weights);
    if (use.motion == nullptr) {
        return;
    }
    import.vertexKeyCount += use.motion->Count() * rest.size();
    if (import.vertexKeyCount > kMostKeyPoints) {
        import.report.Problem(place, eMessageId::ImportMorphKeys);
        return;
    }
    for (std::size_t key = 0; key < use.motion->Count(); ++key) {
        object.vertexKeys.push_back(
            {use.motion->frames[key], Morphed(rest, targets, use.motion->Value(key))});
    }
}

void MovePoints(ePoints& points, const host::Matrix3& matrix) {
    for (host::Point3& point : points) {
        point = point * matrix;
    }
}

// Normals go through the inverse, transposed.
void MoveNormals(ePoints& normals, const host::Matrix3& matrix) {
    const host::Matrix3 inverse = Inverse(matrix);
    for (host::Point3& n : normals) {
        n = host::Normalize(
            {DotProd(n, inverse.GetRow(0)), DotProd(n, inverse.GetRow(1)), DotProd(n, inverse.GetRow(2))});
    }
}

void MoveMesh(eMeshObject& object, const host::Matrix3& matrix) {
    MovePoints(object.mesh.verts, matrix);
    for (eVertexKey& key : object.vertexKeys) {
        MovePoints(key.vertices, matrix);
    }
    if (object.mesh.specifiedNormals) {
        MoveNormals(object.mesh.specifiedNormals->normals, matrix);
    }
}

bool IsMorphed(const eGltfMeshUse& use) {
    return use.motion != nullptr ||
           std::ranges::any_of(use.weights, [](float weight) { return weight != 0; });
}

eObjectData MakeTriangleObject(eGltfImport& import, int mesh, const eGltfMeshUse& use) {
    const eGltfVertices vertices(import, mesh);
    if (import.report.HasProblems()) {
        return {};
    }
    eMeshObject object{MakeGltfMesh(import.report, import.accessors, vertices), {}};
    if (IsMorphed(use)) {
        MorphMesh(import, vertices, use, GltfPlace("meshes", mesh), object);
    }
    eObjectData result;
    if (use.skin) {
        eSkinModifier skin = use.skin->modifier;
        ReadGltfInfluences(import, vertices, skin);
        if (use.skin->isPlaced) {
            MoveMesh(object, use.skin->placement);
        }
        result.modifiers.emplace_back(std::move(skin));
    }
    result.kind = std::move(object);
    return result;
}

}  // namespace

eGltfMeshUse GltfMeshUse(eGltfImport& import, int node, const std::vector<host::Matrix3>& worlds) {
    const tinygltf::Node& source = import.model.nodes[static_cast<std::size_t>(node)];
    const tinygltf::Mesh& mesh = import.model.meshes[static_cast<std::size_t>(source.mesh)];
    const eGltfCurve& motion = import.curves[static_cast<std::size_t>(node)].weights;
    eGltfMeshUse use;
    const std::vector<double>& weights = source.weights.empty() ? mesh.weights : source.weights;
    std::ranges::transform(weights, std::back_inserter(use.weights),
                           [](double weight) { return static_cast<float>(weight); });
    if (weights.empty()) {
        use.weights.resize(mesh.primitives.front().targets.size());
    }
    use.motion = motion.IsEmpty() ? nullptr : &motion;
    if (source.skin >= 0) {
        use.skin = ReadGltfSkin(import, node, worlds);
    }
    use.isOwn = !source.weights.empty() || use.motion != nullptr || (use.skin && use.skin->isPlaced);
    return use;
}

eObjectData MakeGltfMeshObject(eGltfImport& import, int mesh, const eGltfMeshUse& use) {
    const tinygltf::Mesh& source = import.model.meshes[static_cast<std::size_t>(mesh)];
    const bool hasTriangles = HasTopology(source, eGltfTopology::Triangles);
    NoticeLosses(import, source, hasTriangles);
    if (hasTriangles) {
        return MakeTriangleObject(import, mesh, use);
    }
    eObjectData object;
    if (std::vector<eSpline> splines = ReadGltfLines(import, mesh); !splines.empty()) {
        object.kind = eLineObject{std::move(splines)};
    } else {
        object.kind = eHelperObject{};
    }
    return object;
}

}  // namespace standalone
