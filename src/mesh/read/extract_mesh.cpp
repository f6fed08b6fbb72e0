#include "mesh/read/extract_mesh.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "mesh/read/face_reader.h"
#include "mesh/read/grow.h"
#include "mesh/read/node_reading.h"
#include "mesh/read/skin_switch.h"
#include "mesh/read/vertex_light.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/bones/find_skin.h"
#include "scene/current_model.h"
#include "scene/master_scale.h"
#include "scene/properties/node_properties.h"
#include "scene/triangle_mesh.h"

namespace {

using host::Matrix3;
using host::Point3;

// The host's command panel shows its modify mode while a modifier is switched, and what it showed before
// after.
class eModifyMode {
public:
    explicit eModifyMode(host::Interface& hostInterface)
        : host(hostInterface), before(hostInterface.GetCommandPanelTaskMode()) {
        constexpr int kModifyMode = 2;
        host.SetCommandPanelTaskMode(kModifyMode);
    }
    ~eModifyMode() { host.SetCommandPanelTaskMode(before); }
    eModifyMode(const eModifyMode&) = delete;
    eModifyMode& operator=(const eModifyMode&) = delete;

private:
    host::Interface& host;
    int before;
};

host::INode& RootOf(host::INode& node, const eExportBone& bone, host::INode* commonTarget) {
    if (commonTarget != nullptr) {
        return *commonTarget;
    }
    const bool isInGroup = node.IsGroupMember() && !node.IsGroupHead();
    return isInGroup && bone.node != nullptr ? *bone.node : node;
}

bool FitsRoot(const eNodeReading& reading) {
    const bool rootIsSkinned = FindSkin(reading.root) != nullptr;
    if (reading.skin != nullptr && !rootIsSkinned) {
        Tell(reading.run, eMessageId::SkinInPlainGroup, {.node = host::PathOf(reading.node)});
        return false;
    }
    if (reading.skin == nullptr && rootIsSkinned && reading.IsFirstFrame()) {
        Tell(reading.run, eMessageId::SkinUnskinnedPart, {.node = host::PathOf(reading.node)},
             reading.node.GetName(), reading.root.GetName());
    }
    return true;
}

eReadingSpace MakeSpace(const eNodeReading& reading) {
    const Matrix3 objectTM = reading.node.GetObjTMAfterWSM(reading.time);
    eReadingSpace space;
    space.toBone = objectTM * Inverse(NoScale(reading.root.GetNodeTM(reading.time)));
    const Matrix3 inverse = Inverse(space.toBone);
    for (int i = 0; i < 3; ++i) {
        space.normalMatrix.SetRow(i, {inverse.GetRow(0)[i], inverse.GetRow(1)[i], inverse.GetRow(2)[i]});
    }
    space.mirrored = objectTM.Parity() != 0;
    return space;
}

void PrepareRootLights(const eNodeReading& reading) {
    const Matrix3 boneMatrix = Inverse(NoScale(reading.root.GetObjTMAfterWSM(reading.time)));
    if (reading.IsFirstFrame()) {
        reading.bone.matrix = boneMatrix;
    }
    PrepareLights(reading.run, reading.root, boneMatrix);
}

// True if the mesh has a vertex alpha channel; nothing if the channel has a face that leaves its vertices.
std::optional<bool> HasVertexAlpha(const host::Mesh& mesh) {
    const auto count = static_cast<std::size_t>(mesh.getNumMapVerts(host::Mesh::kVertexAlphaChannel));
    if (count == 0) {
        return false;
    }
    const auto faces = mesh.mapFaces(host::Mesh::kVertexAlphaChannel);
    for (const host::TVFace& face : faces) {
        if (face.t[0] >= count || face.t[1] >= count || face.t[2] >= count) {
            return std::nullopt;
        }
    }
    return faces.size() == mesh.faces.size() ? std::optional(true) : std::nullopt;
}

void AppendVertices(const eNodeReading& reading, const eReadingSpace& space, const host::Mesh& mesh) {
    const float scale = MasterScale(reading.run);
    std::vector<Point3>& positions = reading.Frame().positions;
    ReserveMore(positions, mesh.verts.size());
    for (const Point3& vertex : mesh.verts) {
        positions.push_back((vertex * space.toBone) * scale);
    }
}

// The bone table is that of the root's skin, whichever node of the mesh comes first.
void FillSkinBones(const eNodeReading& reading, const host::ISkin& rootSkin) {
    std::vector<host::INode*>& bones = reading.bone.mesh.skinBones;
    const int count = std::min(rootSkin.GetNumBones(), kBonesPerSkin);
    for (int i = static_cast<int>(bones.size()); i < count; ++i) {
        bones.push_back(rootSkin.GetBone(i));
    }
}

// False if the root has more bones than the table holds; its own faces would follow wrong ones.
bool ReadBoneTable(const eNodeReading& reading) {
    host::Modifier* modifier = reading.skin != nullptr ? FindSkin(reading.root) : nullptr;
    const host::ISkin* rootSkin =
        modifier != nullptr ? modifier->GetInterface(host::Modifier::kSkinInterface) : nullptr;
    if (rootSkin == nullptr || !reading.IsFirstFrame()) {
        return true;
    }
    FillSkinBones(reading, *rootSkin);
    if (&reading.node != &reading.root || rootSkin->GetNumBones() <= kBonesPerSkin) {
        return true;
    }
    TellOfNode(reading.run, eMessageId::SkinTooManyBones, reading.node);
    reading.bone.isRefused = true;
    return false;
}

void ReadTriangles(const eNodeReading& reading) {
    const eTriangleMesh triangles(reading.node, reading.time);
    if (!triangles.IsValid()) {
        return;
    }
    host::Mesh& mesh = triangles.Mesh();
    const std::optional<bool> hasVertexAlpha = HasVertexAlpha(mesh);
    if (!hasVertexAlpha) {
        if (reading.IsFirstFrame()) {
            TellOfNode(reading.run, eMessageId::MeshAlphaChannel, reading.node);
        }
        return;
    }
    const eReadingSpace space = MakeSpace(reading);
    PrepareRootLights(reading);
    const std::size_t base = reading.Frame().positions.size();
    AppendVertices(reading, space, mesh);
    if (ReadBoneTable(reading)) {
        eFaceReader(reading, space, mesh, *hasVertexAlpha, base).ReadFaces();
    }
}

}  // namespace

eExportBone* BoneOfMesh(Export& run, const host::INode& node, const host::INode* commonTarget) {
    const int index = FindBoneIndex(node, commonTarget);
    if (index < 0 || static_cast<std::size_t>(index) >= run.model->bones.size()) {
        return nullptr;
    }
    eExportBone& bone = run.model->bones[static_cast<std::size_t>(index)];
    return bone.hasMesh != 0 ? &bone : nullptr;
}

void ExtractMesh(Export& run, host::INode& node, host::TimeValue time, host::INode* commonTarget) {
    eExportBone* bone = BoneOfMesh(run, node, commonTarget);
    if (bone == nullptr || static_cast<std::size_t>(run.model->meshFrame) >= bone->mesh.frames.size()) {
        return;
    }
    const eNodeReading reading{.run = run,
                               .node = node,
                               .root = RootOf(node, *bone, commonTarget),
                               .bone = *bone,
                               .skin = FindSkin(node),
                               .time = time,
                               .meshFrame = run.model->meshFrame};
    if (host::Mtl* material = node.GetMtl()) {
        host::Interval valid = host::kForever;
        material->Update(time, valid);
    }
    if (!FitsRoot(reading)) {
        return;
    }
    const eModifyMode modifyMode(*run.host);
    const bool staysDeformed = reading.skin == nullptr || HasUserProp(node, "OldSkin");
    const eSkinSwitch restPose(staysDeformed ? nullptr : reading.skin);
    ReadTriangles(reading);
}
