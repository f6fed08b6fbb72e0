#include "standalone/loaders/assimp/assimp_mesh.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "standalone/loaders/assimp/assimp_morphs.h"
#include "standalone/loaders/assimp/assimp_skin.h"
#include "standalone/loaders/shared/line_chains.h"

namespace standalone {
namespace {

using eMeshes = std::vector<const aiMesh*>;

constexpr int kFirstTextureChannel = 1;

host::Point3 PointOf(const aiVector3D& v) {
    return {v.x + 0.0F, v.y + 0.0F, v.z + 0.0F};
}

// Calls take(mesh, corner's vertex in it) for each corner, three per triangle, in the order of the faces.
template <class Take>
void ForEachCorner(const eMeshes& meshes, Take take) {
    for (std::size_t mesh = 0; mesh < meshes.size(); ++mesh) {
        for (const aiFace& face : std::span(meshes[mesh]->mFaces, meshes[mesh]->mNumFaces)) {
            for (const unsigned corner : std::span(face.mIndices, face.mNumIndices == 3 ? 3U : 0U)) {
                take(mesh, corner);
            }
        }
    }
}

void AddFaces(const eMeshes& meshes, const eAssimpVertices& vertices, host::Mesh& mesh) {
    std::size_t corner = 0;
    ForEachCorner(meshes, [&](std::size_t part, std::uint32_t vertex) {
        if (corner % 3 == 0) {
            mesh.faces.emplace_back().smGroup = 1;
            mesh.faces.back().setMatID(static_cast<std::uint16_t>(part));
        }
        mesh.faces.back().v[corner++ % 3] = vertices.NumberOf(part, vertex);
    });
}

// As the glTF loader does: the file's normals are the artist's own, whatever groups they came from. Those
// without length are none.
void AddNormals(const eMeshes& meshes, const host::Matrix3& toObject, host::Mesh& mesh) {
    if (std::ranges::none_of(meshes, [](const aiMesh* part) { return part->HasNormals(); })) {
        return;
    }
    const host::Matrix3 inverse = Inverse(toObject);
    ePointTable table;
    host::MeshNormalSpec spec;
    spec.faceNormals.reserve(3 * mesh.faces.size());
    ForEachCorner(meshes, [&](std::size_t part, std::uint32_t vertex) {
        const host::Point3 n =
            meshes[part]->HasNormals() ? PointOf(meshes[part]->mNormals[vertex]) : host::Point3{};
        const host::Point3 turned = host::Normalize(
            {DotProd(n, inverse.GetRow(0)), DotProd(n, inverse.GetRow(1)), DotProd(n, inverse.GetRow(2))});
        const bool isNormal = std::isfinite(DotProd(turned, turned)) && DotProd(turned, turned) > 0;
        spec.faceNormals.push_back(isNormal ? static_cast<std::int32_t>(table.NumberOf(turned)) : -1);
    });
    spec.normals = std::move(table.points);
    spec.explicitNormals.assign(spec.normals.size(), true);
    mesh.specifiedNormals = std::move(spec);
}

// A channel with the value that `pick` finds at each corner.
template <class Pick>
void AddChannel(const eMeshes& meshes, int number, host::Mesh& mesh, Pick pick) {
    host::MapChannel& channel = mesh.maps.emplace_back();
    channel.channel = number;
    channel.faces.resize(mesh.faces.size());
    ePointTable table;
    std::size_t corner = 0;
    ForEachCorner(meshes, [&](std::size_t part, std::uint32_t vertex) {
        channel.faces[corner / 3].t[corner % 3] = table.NumberOf(pick(*meshes[part], vertex));
        ++corner;
    });
    channel.verts = std::move(table.points);
}

void AddTextureSets(const eMeshes& meshes, host::Mesh& mesh) {
    for (unsigned set = 0; set < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++set) {
        if (std::ranges::any_of(meshes, [&](const aiMesh* part) { return part->HasTextureCoords(set); })) {
            AddChannel(meshes, static_cast<int>(set) + kFirstTextureChannel, mesh,
                       [&](const aiMesh& part, std::uint32_t vertex) {
                           return part.HasTextureCoords(set) ? PointOf(part.mTextureCoords[set][vertex])
                                                             : host::Point3{};
                       });
        }
    }
}

void AddColors(eImportReport& report, const eMeshes& meshes, host::Mesh& mesh) {
    const auto hasColors = [](const aiMesh* part) { return part->HasVertexColors(0); };
    const auto colorAt = [](const aiMesh& part, std::uint32_t vertex) {
        return part.HasVertexColors(0) ? part.mColors[0][vertex] : aiColor4D(1, 1, 1, 1);
    };
    if (std::ranges::any_of(meshes, [](const aiMesh* part) { return part->HasVertexColors(1); })) {
        report.CannotShow(ePhrase::LostColors);
    }
    if (std::ranges::none_of(meshes, hasColors)) {
        return;
    }
    bool hasAlpha = false;
    AddChannel(meshes, host::Mesh::kVertexColorChannel, mesh, [&](const aiMesh& part, std::uint32_t vertex) {
        const aiColor4D color = colorAt(part, vertex);
        hasAlpha = hasAlpha || color.a != 1;
        return host::Point3{color.r, color.g, color.b};
    });
    if (hasAlpha) {
        AddChannel(meshes, host::Mesh::kVertexAlphaChannel, mesh,
                   [&](const aiMesh& part, std::uint32_t vertex) {
                       const float alpha = colorAt(part, vertex).a;
                       return host::Point3{alpha, alpha, alpha};
                   });
    }
}

std::vector<eSpline> LinesOf(const eAssimpImport& import, const eAssimpNode& node,
                             const host::Matrix3& toObject) {
    std::vector<host::Point3> ends;
    for (const unsigned number : std::span(node.shown->mMeshes, node.shown->mNumMeshes)) {
        const aiMesh& mesh = *import.file.mMeshes[number];
        for (const aiFace& face : std::span(mesh.mFaces, mesh.mNumFaces)) {
            for (const unsigned end : std::span(face.mIndices, face.mNumIndices == 2 ? 2U : 0U)) {
                ends.push_back(PointOf(mesh.mVertices[end]) * toObject);
            }
        }
    }
    return ChainSegments(ends);
}

void NoticeLosses(eAssimpImport& import, const eAssimpNode& node, bool hasTriangles) {
    unsigned kinds = 0;
    for (const unsigned number : std::span(node.shown->mMeshes, node.shown->mNumMeshes)) {
        kinds |= import.file.mMeshes[number]->mPrimitiveTypes;
    }
    if (hasTriangles && (kinds & aiPrimitiveType_LINE) != 0) {
        import.report.CannotShow(ePhrase::LostLines);
    }
    if ((kinds & aiPrimitiveType_POINT) != 0) {
        import.report.CannotShow(ePhrase::LostPoints);
    }
}

// False, with a problem, where a corner is beside its vertices or a point is not finite.
bool AreSound(eAssimpImport& import, const eAssimpNode& node) {
    for (const unsigned number : std::span(node.shown->mMeshes, node.shown->mNumMeshes)) {
        const aiMesh& mesh = *import.file.mMeshes[number];
        for (const aiFace& face : std::span(mesh.mFaces, mesh.mNumFaces)) {
            for (const unsigned corner : std::span(face.mIndices, face.mNumIndices)) {
                if (corner >= mesh.mNumVertices) {
                    import.ProblemAt(node, eMessageId::ImportFaceVertex);
                    return false;
                }
            }
        }
        for (const aiVector3D& point : std::span(mesh.mVertices, mesh.mNumVertices)) {
            if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z)) {
                import.ProblemAt(node, eMessageId::ImportPoint);
                return false;
            }
        }
    }
    return true;
}

}  // namespace

eObjectData MakeAssimpMeshObject(eAssimpImport& import, int number) {
    const eAssimpNode& node = import.NodeOf(number);
    eObjectData object;
    if (!AreSound(import, node)) {
        return object;
    }
    const host::Matrix3 toObject = node.geometry * node.frame;
    const eMeshes meshes = TriangleMeshes(import, node);
    NoticeLosses(import, node, !meshes.empty());
    if (meshes.empty()) {
        if (std::vector<eSpline> splines = LinesOf(import, node, toObject); !splines.empty()) {
            object.kind = eLineObject{std::move(splines)};
        }
        return object;
    }
    const eAssimpVertices vertices(meshes);
    eMeshObject made;
    for (const eAssimpVertices::eVertex& vertex : vertices.All()) {
        made.mesh.verts.push_back(PointOf(meshes[vertex.mesh]->mVertices[vertex.number]) * toObject);
    }
    AddFaces(meshes, vertices, made.mesh);
    AddNormals(meshes, toObject, made.mesh);
    AddTextureSets(meshes, made.mesh);
    AddColors(import.report, meshes, made.mesh);
    made.vertexKeys = MakeAssimpVertexKeys(import, number, meshes, vertices, made.mesh.verts);
    if (std::optional<eSkinModifier> skin = MakeAssimpSkin(import, number, meshes, vertices)) {
        object.modifiers.emplace_back(std::move(*skin));
    }
    object.kind = std::move(made);
    return object;
}

}  // namespace standalone
