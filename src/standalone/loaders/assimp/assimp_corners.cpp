#include "standalone/loaders/assimp/assimp_corners.h"

#include <functional>
#include <span>

namespace standalone {
namespace {

// What tells vertices apart, as bytes.
class eVertexKeys {
public:
    explicit eVertexKeys(const aiMesh& ownMesh) : mesh(ownMesh), influences(mesh.mNumVertices) {
        for (unsigned bone = 0; bone < mesh.mNumBones; ++bone) {
            const aiBone& source = *mesh.mBones[bone];
            const std::size_t name = std::hash<std::string_view>()({source.mName.data, source.mName.length});
            for (const aiVertexWeight& weight : std::span(source.mWeights, source.mNumWeights)) {
                if (weight.mVertexId < influences.size()) {
                    Append(influences[weight.mVertexId], name);
                    Append(influences[weight.mVertexId], weight.mWeight);
                }
            }
        }
    }

    std::string Of(std::uint32_t vertex) const {
        std::string key;
        Append(key, mesh.mVertices[vertex]);
        key += influences[vertex];
        for (const aiAnimMesh* target : std::span(mesh.mAnimMeshes, mesh.mNumAnimMeshes)) {
            if (target->mVertices != nullptr && vertex < target->mNumVertices) {
                Append(key, target->mVertices[vertex]);
            }
        }
        return key;
    }

private:
    template <class Value>
    static void Append(std::string& key, const Value& value) {
        key.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    // Both zeros are one place.
    static void Append(std::string& key, const aiVector3D& point) {
        for (const float part : {point.x, point.y, point.z}) {
            Append(key, part + 0.0F);
        }
    }

    const aiMesh& mesh;
    std::vector<std::string> influences;  // by vertex
};

}  // namespace

std::vector<const aiMesh*> TriangleMeshes(const eAssimpImport& import, const eAssimpNode& node) {
    std::vector<const aiMesh*> meshes;
    for (const unsigned number : std::span(node.shown->mMeshes, node.shown->mNumMeshes)) {
        const aiMesh* mesh = import.file.mMeshes[number];
        if ((mesh->mPrimitiveTypes & aiPrimitiveType_TRIANGLE) != 0) {
            meshes.push_back(mesh);
        }
    }
    return meshes;
}

eAssimpVertices::eAssimpVertices(const std::vector<const aiMesh*>& meshes) {
    std::unordered_map<std::string, std::uint32_t> known;
    for (std::size_t mesh = 0; mesh < meshes.size(); ++mesh) {
        const eVertexKeys keys(*meshes[mesh]);
        std::vector<std::uint32_t>& own = numbers.emplace_back(meshes[mesh]->mNumVertices);
        for (const aiFace& face : std::span(meshes[mesh]->mFaces, meshes[mesh]->mNumFaces)) {
            for (const unsigned corner : std::span(face.mIndices, face.mNumIndices == 3 ? 3U : 0U)) {
                const auto [entry, isNew] =
                    known.try_emplace(keys.Of(corner), static_cast<std::uint32_t>(vertices.size()));
                if (isNew) {
                    vertices.push_back({mesh, corner});
                }
                own[corner] = entry->second;
            }
        }
    }
}

std::size_t ePointTable::eHash::operator()(const host::Point3& point) const {
    const std::hash<float> hash;
    return hash(point.x) + 31 * (hash(point.y) + 31 * hash(point.z));
}

std::uint32_t ePointTable::NumberOf(const host::Point3& point) {
    const auto [entry, isNew] = numbers.try_emplace(point, static_cast<std::uint32_t>(points.size()));
    if (isNew) {
        points.push_back(point);
    }
    return entry->second;
}

}  // namespace standalone
