#include "standalone/loaders/assimp/assimp_morphs.h"

#include <algorithm>
#include <map>
#include <span>

#include "standalone/loaders/assimp/assimp_takes.h"

namespace standalone {
namespace {

constexpr std::size_t kMostKeyPoints = std::size_t{1} << 26;

// "body*0" is the channel of the first geometry of the node "body".
const aiMeshMorphAnim* ChannelOf(const eAssimpTake& take, const eAssimpNode& node) {
    if (take.source == nullptr) {
        return nullptr;
    }
    const std::string name = node.shown->mName.C_Str();
    for (const aiMeshMorphAnim* channel :
         std::span(take.source->mMorphMeshChannels, take.source->mNumMorphMeshChannels)) {
        const std::string_view own(channel->mName.data, channel->mName.length);
        if (own == name || own.substr(0, own.find('*')) == name) {
            return channel;
        }
    }
    return nullptr;
}

// The weight of each target from this key on: a target that the key leaves out keeps what it had.
using eWeights = std::map<unsigned, double>;

void Change(eWeights& weights, const aiMeshMorphKey& key) {
    for (unsigned i = 0; i < key.mNumValuesAndWeights; ++i) {
        weights[key.mValues[i]] = key.mWeights[i];
    }
}

std::vector<host::Point3> Morphed(const eAssimpNode& node, const std::vector<const aiMesh*>& meshes,
                                  const eAssimpVertices& vertices, const std::vector<host::Point3>& rest,
                                  const eWeights& weights) {
    std::vector<host::Point3> points = rest;
    host::Matrix3 toObject = node.geometry * node.frame;
    toObject.SetTrans({});
    for (std::size_t v = 0; v < points.size(); ++v) {
        const auto [part, vertex] = vertices.All()[v];
        const aiMesh& mesh = *meshes[part];
        for (const auto& [target, weight] : weights) {
            if (target >= mesh.mNumAnimMeshes || vertex >= mesh.mAnimMeshes[target]->mNumVertices ||
                !mesh.mAnimMeshes[target]->HasPositions()) {
                continue;
            }
            const aiVector3D way = mesh.mAnimMeshes[target]->mVertices[vertex] - mesh.mVertices[vertex];
            points[v] += host::Point3{way.x, way.y, way.z} * toObject * static_cast<float>(weight);
        }
    }
    return points;
}

}  // namespace

std::vector<eVertexKey> MakeAssimpVertexKeys(eAssimpImport& import, int number,
                                             const std::vector<const aiMesh*>& meshes,
                                             const eAssimpVertices& vertices,
                                             const std::vector<host::Point3>& rest) {
    std::vector<eVertexKey> keys;
    const eAssimpNode& node = import.NodeOf(number);
    for (const eAssimpTake& take : import.takes) {
        const aiMeshMorphAnim* channel = ChannelOf(take, node);
        if (channel == nullptr) {
            continue;
        }
        if (channel->mNumKeys > kMostKeyPoints / std::max(rest.size(), std::size_t{1})) {
            import.ProblemAt(node, eMessageId::ImportMorphKeys);
            return {};
        }
        eWeights weights;
        for (const aiMeshMorphKey& key : std::span(channel->mKeys, channel->mNumKeys)) {
            Change(weights, key);
            keys.push_back({WholeFrame(key.mTime * take.rate + take.shift),
                            Morphed(node, meshes, vertices, rest, weights)});
        }
    }
    return keys;
}

}  // namespace standalone
