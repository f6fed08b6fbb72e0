#include "verify/scene_triangles.h"

#include <algorithm>
#include <cmath>

#include "io/clean_name.h"
#include "scene/triangle_mesh.h"
#include "verify/face_surface.h"
#include "verify/node_skin.h"

namespace verify {

namespace {

constexpr int kMostSkinBones = 255;

const host::ISkin* SkinOf(const host::INode& node) {
    host::Modifier* modifier = FindSkinModifier(node);
    return modifier != nullptr ? modifier->GetInterface(host::Modifier::kSkinInterface) : nullptr;
}

std::string BoneName(const host::INode* bone) {
    return bone != nullptr ? CleanNodeName(bone->GetName(), true) : std::string();
}

// The three heaviest weights of the node's vertices, by bone.
class eNodeWeights {
public:
    eNodeWeights(const host::INode& node, eSceneTriangles& target) : skin_(SkinOf(node)) {
        weights_ = skin_ != nullptr ? skin_->GetContextInterface(node) : nullptr;
        for (int bone = 0; weights_ != nullptr && bone < skin_->GetNumBones(); ++bone) {
            bones_.push_back(target.NumberOfBone(BoneName(skin_->GetBone(bone))));
        }
    }

    // Fills the weights of a corner at the vertex.
    void Read(std::uint32_t vertex, eSceneCorner& corner) const {
        constexpr float kLightest = 0.001F;
        std::vector<eSceneWeight> all;
        const int count = weights_ != nullptr ? weights_->GetNumAssignedBones(static_cast<int>(vertex)) : 0;
        for (int i = 0; i < count; ++i) {
            const float weight = weights_->GetBoneWeight(static_cast<int>(vertex), i);
            const int bone = weights_->GetAssignedBone(static_cast<int>(vertex), i);
            if (bone >= 0 && static_cast<std::size_t>(bone) < bones_.size() && std::isfinite(weight)) {
                all.push_back({bones_[static_cast<std::size_t>(bone)], weight});
            }
        }
        std::ranges::stable_sort(all, std::greater(), &eSceneWeight::weight);
        corner.hasMoreWeights = all.size() > 3 && all[3].weight >= kLightest;
        all.resize(std::min<std::size_t>(all.size(), 3));
        std::erase_if(all, [](const eSceneWeight& w) { return std::fabs(w.weight) < kLightest; });
        float sum = 0;
        for (const eSceneWeight& w : all) {
            sum += w.weight;
        }
        for (std::size_t i = 0; i < all.size(); ++i) {
            corner.weights[i] = {all[i].bone,
                                 std::fabs(sum) < kLightest ? all[i].weight : all[i].weight / sum};
        }
    }

private:
    const host::ISkin* skin_;
    const host::ISkinContextData* weights_ = nullptr;
    std::vector<int> bones_;  // numbers of their names
};

// The host's normal of a corner: set by hand, or that of its smoothing groups, or the face's.
host::Point3 CornerNormal(const host::Mesh& mesh, std::size_t face, std::size_t corner) {
    if (const host::MeshNormalSpec* spec = mesh.GetSpecifiedNormals()) {
        const int number = spec->GetNormalIndex(static_cast<int>(face), static_cast<int>(corner));
        if (number >= 0 && spec->GetNormalExplicit(number)) {
            return spec->normals[static_cast<std::size_t>(number)];
        }
    }
    const host::Face& record = mesh.faces[face];
    const host::RVertex& vertex = mesh.renderVerts[record.v[corner]];
    const bool isSet = (vertex.flags & host::RVertex::kSpecifiedNormal) != 0;
    if (!isSet && (record.smGroup == 0 || vertex.NormalCount() == 0)) {
        return mesh.faceNormals[face];
    }
    host::Point3 normal = vertex.normal;
    for (std::uint32_t i = 0; !isSet && vertex.NormalCount() > 1 && i < vertex.NormalCount(); ++i) {
        const host::RNormal& candidate = mesh.renderNormals[vertex.firstNormal + i];
        normal = (candidate.smGroup & record.smGroup) != 0 ? candidate.normal : normal;
    }
    return normal;
}

// Every index of the vertex alpha channel must lie in it.
bool IsAlphaSound(const host::MapChannel* alpha, std::size_t faces) {
    if (alpha == nullptr || alpha->verts.empty()) {
        return true;
    }
    return alpha->faces.size() == faces && std::ranges::all_of(alpha->faces, [&](const host::TVFace& face) {
               return std::ranges::all_of(face.t, [&](std::uint32_t t) { return t < alpha->verts.size(); });
           });
}

// The triangles of one node.
class eNodeReader {
public:
    eNodeReader(const host::Mesh& mesh, host::INode& node, const eSceneMesh& target, double metres,
                host::TimeValue time, eBakedLight& light, eSceneTriangles& found)
        : mesh_(mesh),
          surfaces_(mesh, node.GetMtl()),
          weights_(node, found),
          light_(light),
          time_(time),
          metres_(metres),
          isMirrored_(node.GetObjTMAfterWSM(time).Parity() != 0),
          toMesh_(Product(Exact(node.GetObjTMAfterWSM(time)),
                          host::ExactInverse(NoScale(target.owner->GetNodeTM(time))))),
          inverse_(ExactInverse(toMesh_)),
          colors_(mesh.FindMap(host::Mesh::kVertexColorChannel)),
          alpha_(mesh.FindMap(host::Mesh::kVertexAlphaChannel)),
          found_(found) {}

    void Read(int nodeNumber) {
        for (std::size_t face = 0; face < mesh_.faces.size(); ++face) {
            if (mesh_.faces[face].Hidden()) {
                ++found_.hidden;
                continue;
            }
            const eFaceSurface& surface = surfaces_.Of(mesh_.faces[face]);
            eSceneTriangle& triangle = found_.triangles.emplace_back();
            triangle.node = nodeNumber;
            triangle.hasSecondMap = surface.hasSecondMap;
            triangle.material = NumberOfMaterial(surface);
            for (std::size_t i = 0; i < 3; ++i) {
                triangle.corners[i] = Corner(face, isMirrored_ ? 2 - i : i, surface);
            }
        }
    }

private:
    int NumberOfMaterial(const eFaceSurface& surface) {
        const auto known = std::ranges::find(found_.materials, surface.material);
        const auto number = known - found_.materials.begin();
        if (known == found_.materials.end()) {
            found_.materials.push_back(surface.material);
            found_.leaves.push_back(surface.leaf);
        }
        return static_cast<int>(number);
    }

    eSceneCorner Corner(std::size_t face, std::size_t corner, const eFaceSurface& surface) {
        const std::uint32_t vertex = mesh_.faces[face].v[corner];
        eSceneCorner result;
        result.position = Through(Exact(mesh_.verts[vertex]), toMesh_);
        for (double& coordinate : result.position) {
            coordinate *= metres_;
        }
        result.normal = Normal(face, corner);
        const eVector first = surface.first.At(face, corner);
        const eVector second = surface.second.At(face, corner);
        result.maps = {{{first[0], 1 - first[1]}, {second[0], 1 - second[1]}}};
        result.color = Color(face, corner, surface, result.normal);
        result.vertex = vertex;
        weights_.Read(vertex, result);
        return result;
    }

    // A normal without direction gives way to that of the face.
    eVector Normal(std::size_t face, std::size_t corner) const {
        const eVector own = NormalThroughInverse(Exact(CornerNormal(mesh_, face, corner)), inverse_);
        return Length(own) > 0 ? own : NormalThroughInverse(Exact(mesh_.faceNormals[face]), inverse_);
    }

    std::array<float, 4> Color(std::size_t face, std::size_t corner, const eFaceSurface& surface,
                               const eVector& normal) {
        const bool isColored = colors_ != nullptr && !colors_->verts.empty();
        const host::Point3 own =
            isColored ? colors_->verts[colors_->faces[face].t[corner]] : host::Point3{1, 1, 1};
        const host::Point3 tint = surface.isBlendedByVertices ? host::Point3{1, 1, 1} : own;
        const double length = Length(normal) > 0 ? Length(normal) : 1;
        const host::Color light =
            light_.At(mesh_.verts[mesh_.faces[face].v[corner]],
                      {static_cast<float>(normal[0] / length), static_cast<float>(normal[1] / length),
                       static_cast<float>(normal[2] / length)});
        return {tint.x * light.r, tint.y * light.g, tint.z * light.b,
                1 - Transparency(face, corner, surface, own)};
    }

    float Transparency(std::size_t face, std::size_t corner, const eFaceSurface& surface,
                       const host::Point3& color) const {
        if (surface.blend != nullptr) {
            return surface.isBlendedByVertices ? color.x : surface.BlendAt(face, corner, time_);
        }
        const bool hasAlpha = alpha_ != nullptr && !alpha_->verts.empty();
        return 1 - surface.opacity * (hasAlpha ? alpha_->verts[alpha_->faces[face].t[corner]].x : 1);
    }

    const host::Mesh& mesh_;
    eSurfaces surfaces_;
    eNodeWeights weights_;
    eBakedLight& light_;
    host::TimeValue time_;
    double metres_;
    bool isMirrored_;
    host::DMatrix3 toMesh_;
    host::DMatrix3 inverse_;
    const host::MapChannel* colors_;
    const host::MapChannel* alpha_;
    eSceneTriangles& found_;
};

void ReadBoneTable(const host::INode& owner, eSceneTriangles& found) {
    const host::ISkin* const skin = SkinOf(owner);
    found.isSkinned = skin != nullptr;
    for (int bone = 0; skin != nullptr && bone < skin->GetNumBones(); ++bone) {
        found.boneNames.push_back(BoneName(skin->GetBone(bone)));
    }
    found.skinBones = found.boneNames.size();
    if (found.skinBones > kMostSkinBones) {
        found.refusals.emplace_back("more than 255 bones");
    }
}

}  // namespace

int eSceneTriangles::NumberOfBone(const std::string& name) {
    const auto known = std::ranges::find(boneNames, name);
    const auto number = known - boneNames.begin();
    if (known == boneNames.end()) {
        boneNames.push_back(name);
    }
    return static_cast<int>(number);
}

eSceneTriangles ReadSceneTriangles(const eVerifiedScene& scene, const eSceneMesh& mesh, eBakedLight& light,
                                   host::TimeValue time) {
    eSceneTriangles found;
    ReadBoneTable(*mesh.owner, found);
    found.isLit = light.PointAt(*mesh.owner, time);
    for (std::size_t i = 0; i < mesh.feeders.size(); ++i) {
        host::INode& node = *mesh.feeders[i];
        if (FindSkinModifier(node) != nullptr && !found.isSkinned) {
            found.refusals.push_back("a skin in a mesh without one: " + node.GetName());
            continue;
        }
        if (host::Mtl* material = node.GetMtl()) {
            host::Interval valid = host::kForever;
            material->Update(time, valid);
        }
        const eRestPose rest(node);
        const eTriangleMesh triangles(node, time);
        if (!triangles.IsValid()) {
            continue;
        }
        host::Mesh& own = triangles.Mesh();
        if (!IsAlphaSound(own.FindMap(host::Mesh::kVertexAlphaChannel), own.faces.size())) {
            found.refusals.push_back("a broken channel of vertex alpha: " + node.GetName());
            continue;
        }
        own.buildNormals();
        own.buildRenderNormals();
        eNodeReader(own, node, mesh, scene.MetresPerUnit(), time, light, found).Read(static_cast<int>(i));
    }
    return found;
}

}  // namespace verify
