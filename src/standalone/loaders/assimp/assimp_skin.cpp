#include "standalone/loaders/assimp/assimp_skin.h"

#include <algorithm>
#include <map>
#include <span>
#include <unordered_map>

#include "standalone/loaders/assimp/assimp_space.h"

namespace standalone {
namespace {

using eMeshes = std::vector<const aiMesh*>;

std::unordered_map<std::string, int> NodesByName(const eAssimpImport& import) {
    std::unordered_map<std::string, int> nodes;
    for (std::size_t node = 0; node < import.nodes.size(); ++node) {
        nodes.try_emplace(import.nodes[node].shown->mName.C_Str(), static_cast<int>(node));
    }
    return nodes;
}

class eSkinMaker {
public:
    eSkinMaker(eAssimpImport& ownImport, int ownNode) : import(ownImport), node(ownNode) {}

    // Numbers the bones of a part of the mesh among those of all parts.
    void AddBones(const aiMesh& mesh) {
        std::vector<int>& ofMesh = boneNumbers.emplace_back();
        for (const aiBone* bone : std::span(mesh.mBones, mesh.mNumBones)) {
            ofMesh.push_back(NumberOf(*bone));
        }
    }

    void AddWeights(const eMeshes& meshes, const eAssimpVertices& vertices) {
        std::vector<std::vector<std::vector<eSkinWeight>>> influences;
        for (std::size_t mesh = 0; mesh < meshes.size(); ++mesh) {
            influences.push_back(InfluencesOf(*meshes[mesh], boneNumbers[mesh]));
        }
        for (const eAssimpVertices::eVertex& vertex : vertices.All()) {
            const std::vector<eSkinWeight>& own = influences[vertex.mesh][vertex.number];
            skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size()));
            skin.weights.insert(skin.weights.end(), own.begin(), own.end());
        }
        skin.firstWeight.push_back(static_cast<std::uint32_t>(skin.weights.size()));
    }

    eSkinModifier skin;

private:
    int NumberOf(const aiBone& bone) {
        const std::string name = bone.mName.C_Str();
        const auto [entry, isNew] = numbers.try_emplace(name, -1);
        if (isNew) {
            const auto found = nodes.find(name);
            if (found == nodes.end()) {
                import.report.CannotShow(ePhrase::LostBone, name);
                return -1;
            }
            entry->second = static_cast<int>(skin.bones.size());
            skin.bones.push_back(found->second);
            skin.bindMatrices.push_back(Inverse(import.NodeOf(node).frame) * HostMatrix(bone.mOffsetMatrix) *
                                        import.NodeOf(found->second).frame);
        }
        return entry->second;
    }

    static std::vector<std::vector<eSkinWeight>> InfluencesOf(const aiMesh& mesh,
                                                              const std::vector<int>& bones) {
        std::vector<std::vector<eSkinWeight>> influences(mesh.mNumVertices);
        for (unsigned bone = 0; bone < mesh.mNumBones; ++bone) {
            const aiBone& source = *mesh.mBones[bone];
            for (const aiVertexWeight& weight : std::span(source.mWeights, source.mNumWeights)) {
                if (bones[bone] >= 0 && weight.mVertexId < mesh.mNumVertices && weight.mWeight > 0) {
                    influences[weight.mVertexId].push_back({bones[bone], weight.mWeight});
                }
            }
        }
        return influences;
    }

    eAssimpImport& import;
    int node;
    std::unordered_map<std::string, int> nodes = NodesByName(import);
    std::map<std::string, int> numbers;         // of bones in the skin
    std::vector<std::vector<int>> boneNumbers;  // by mesh and bone of it
};

}  // namespace

std::vector<int> BonesOf(const eAssimpImport& import, const eAssimpNode& node) {
    const std::unordered_map<std::string, int> nodes = NodesByName(import);
    std::vector<int> bones;
    for (const aiMesh* mesh : TriangleMeshes(import, node)) {
        for (const aiBone* bone : std::span(mesh->mBones, mesh->mNumBones)) {
            if (const auto found = nodes.find(bone->mName.C_Str()); found != nodes.end()) {
                bones.push_back(found->second);
            }
        }
    }
    return bones;
}

std::optional<eSkinModifier> MakeAssimpSkin(eAssimpImport& import, int node, const eMeshes& meshes,
                                            const eAssimpVertices& vertices) {
    if (std::ranges::none_of(meshes, [](const aiMesh* mesh) { return mesh->HasBones(); })) {
        return std::nullopt;
    }
    eSkinMaker maker(import, node);
    for (const aiMesh* mesh : meshes) {
        maker.AddBones(*mesh);
    }
    maker.AddWeights(meshes, vertices);
    return std::move(maker.skin);
}

}  // namespace standalone
