#include "standalone/objects/skin.h"

#include <cmath>
#include <optional>
#include <span>

#include "standalone/objects/scene.h"

namespace standalone {

eSkin::eSkin(eScene& ownScene, std::size_t place, const eSkinModifier& skin, const host::Object& ownOwner)
    : eModifier(ownScene.hold, place), scene(ownScene), data(skin), owner(ownOwner) {}

void eSkin::NotifyDependents(const host::Interval&, std::uint32_t, std::uint32_t, std::uint32_t, bool) {
    ++generation;
}

host::INode* eSkin::GetBone(int bone) const {
    return scene.Node(data.bones[static_cast<std::size_t>(bone)]);
}

const host::ISkinContextData* eSkin::GetContextInterface(const host::INode& node) const {
    return node.GetObjectRef() == &owner ? this : nullptr;
}

namespace {

std::span<const eSkinWeight> WeightsOf(const eSkinModifier& skin, std::size_t vertex) {
    if (vertex + 1 >= skin.firstWeight.size()) {
        return {};
    }
    return std::span(skin.weights)
        .subspan(skin.firstWeight[vertex], skin.firstWeight[vertex + 1] - skin.firstWeight[vertex]);
}

// The weighted mean of the movements of a vertex's bones; nothing where no weight is left.
std::optional<host::Matrix3> Blend(std::span<const eSkinWeight> weights,
                                   std::span<const host::Matrix3> movements) {
    host::Point3 rows[4];
    float sum = 0;
    for (const eSkinWeight& pair : weights) {
        const host::Matrix3& movement = movements[static_cast<std::size_t>(pair.bone)];
        for (int row = 0; row < 4; ++row) {
            rows[row] += movement.GetRow(row) * pair.weight;
        }
        sum += pair.weight;
    }
    if (!(std::fabs(sum) > 1e-12F)) {
        return std::nullopt;
    }
    const float share = 1 / sum;
    return host::Matrix3(rows[0] * share, rows[1] * share, rows[2] * share, rows[3] * share);
}

void DeformNormals(host::MeshNormalSpec& spec, const host::Mesh& mesh,
                   std::span<const std::optional<host::Matrix3>> blends) {
    std::vector<bool> moved(spec.normals.size());
    for (std::size_t corner = 0; corner < spec.faceNormals.size(); ++corner) {
        const std::int32_t number = spec.faceNormals[corner];
        const std::optional<host::Matrix3>& blend = blends[mesh.faces[corner / 3].v[corner % 3]];
        if (number < 0 || moved[static_cast<std::size_t>(number)] || !blend) {
            continue;
        }
        moved[static_cast<std::size_t>(number)] = true;
        host::Point3& normal = spec.normals[static_cast<std::size_t>(number)];
        normal = Normalize(VectorTransform(*blend, normal));
    }
}

}  // namespace

int eSkin::GetNumAssignedBones(int vertex) const {
    return static_cast<int>(WeightsOf(data, static_cast<std::size_t>(vertex)).size());
}

int eSkin::GetAssignedBone(int vertex, int assignment) const {
    return WeightsOf(data, static_cast<std::size_t>(vertex))[static_cast<std::size_t>(assignment)].bone;
}

float eSkin::GetBoneWeight(int vertex, int assignment) const {
    return WeightsOf(data, static_cast<std::size_t>(vertex))[static_cast<std::size_t>(assignment)].weight;
}

// Per bone, from the object space of the rest pose to the object space at the time.
std::vector<host::Matrix3> eSkin::BoneMovements(const eSceneNode& node, host::TimeValue t) const {
    const host::TimeValue bindTime = scene.TimeOf(data.bindFrame);
    const host::Matrix3 objectAtBind = node.GetObjTMAfterWSM(bindTime);
    const host::Matrix3 worldToObject = Inverse(node.GetObjTMAfterWSM(t));
    std::vector<host::Matrix3> movements;
    movements.reserve(data.bones.size());
    for (std::size_t i = 0; i < data.bones.size(); ++i) {
        const eSceneNode& bone = *scene.Node(data.bones[i]);
        const host::Matrix3 objectToBone = data.bindMatrices.empty()
                                               ? objectAtBind * Inverse(bone.GetNodeTM(bindTime))
                                               : data.bindMatrices[i];
        movements.push_back(objectToBone * bone.GetNodeTM(t) * worldToObject);
    }
    return movements;
}

void eSkin::Deform(host::Mesh& mesh, const eSceneNode& node, host::TimeValue t) const {
    const std::vector<host::Matrix3> movements = BoneMovements(node, t);
    std::vector<std::optional<host::Matrix3>> blends(mesh.verts.size());
    for (std::size_t v = 0; v < mesh.verts.size(); ++v) {
        blends[v] = Blend(WeightsOf(data, v), movements);
        if (blends[v]) {
            mesh.verts[v] = mesh.verts[v] * *blends[v];
        }
    }
    if (mesh.specifiedNormals) {
        DeformNormals(*mesh.specifiedNormals, mesh, blends);
    }
}

}  // namespace standalone
