#include "mesh/write_mesh.h"

#include <algorithm>
#include <string>
#include <utility>

#include "material/queries/material_queries.h"
#include "mesh/build/bone_palettes.h"
#include "mesh/build/finite_frames.h"
#include "mesh/build/finite_vertex.h"
#include "mesh/build/mesh_assembly.h"
#include "mesh/build/tangents.h"
#include "mesh/build/weld.h"
#include "mesh/file/animated_texture.h"
#include "mesh/file/mesh_body_writer.h"
#include "mesh/read/frame_extent.h"
#include "mesh/read/mirrored_sharing.h"
#include "mesh/read/skin_bone_check.h"
#include "mesh/read/vertex_light.h"
#include "mesh/strips/mesh_order.h"
#include "mesh/strips/renumber.h"
#include "mesh/strips/sub_mesh.h"
#include "messages/phrase.h"
#include "run/export.h"
#include "run/tell.h"
#include "scene/bones/find_skin.h"
#include "scene/current_model.h"
#include "scene/properties/node_name.h"
#include "scene/run_journal.h"
#include "scene/skeleton/mirrored_views.h"

namespace {

// Tells what is wrong with the bone's mesh, and that it is not written.
bool Refuse(Export& run, const eExportBone& bone, eMessageId id) {
    TellOfNode(run, id, *bone.node);
    return false;
}

void StartProgress(Export& run, const std::string& title) {
    run.host->ProgressStart(title);
    run.host->ProgressUpdate(0);
}

bool HasFaces(Export& run, const eExportBone& bone) {
    const eExportMesh& mesh = bone.mesh;
    if (mesh.frames.empty() || mesh.frames.front().positions.empty()) {
        return Refuse(run, bone, eMessageId::MeshNoTriangles);
    }
    if (mesh.faces.empty() && bone.isRefused) {
        return false;
    }
    if (mesh.faces.empty()) {
        return Refuse(run, bone, eMessageId::MeshNoVisibleFaces);
    }
    return true;
}

// Nodes that an animation leaves out stand still in its frames.
void CompleteFrames(eExportMesh& mesh) {
    const eFrameExtent whole = ExtentOf(mesh.frames.front());
    for (std::size_t frame = 1; frame < mesh.frames.size(); ++frame) {
        if (!mesh.frames[frame].positions.empty()) {
            FillFromFirstFrame(mesh, mesh.frames[frame], whole);
        }
    }
}

// A mesh is skinned as a whole: the faces of nodes without skin then follow no bone.
bool PrepareSkin(eExportBone& bone) {
    eExportMesh& mesh = bone.mesh;
    if (mesh.vertexSkins.empty() && FindSkin(*bone.node) == nullptr) {
        return false;
    }
    mesh.vertexSkins.resize(mesh.frames.front().positions.size());
    BuildBonePalettes(bone);
    return true;
}

bool FitsFile(Export& run, const eExportBone& bone, const eMeshAssembly& assembly) {
    constexpr std::size_t kMostTriangles = 65535;
    if (assembly.vertices.size() >= eVertexWeld::kMostVertices) {
        return Refuse(run, bone, eMessageId::MeshTooManyVertices);
    }
    if (assembly.triangles > kMostTriangles) {
        return Refuse(run, bone, eMessageId::MeshTooManyTriangles);
    }
    if (!std::ranges::all_of(assembly.vertices, IsFinite)) {
        return Refuse(run, bone, eMessageId::MeshNotFinite);
    }
    return true;
}

host::Box3 BoundsOf(const std::vector<eExportVertex>& vertices) {
    host::Box3 box;
    for (const eExportVertex& vertex : vertices) {
        box += vertex.position;
    }
    return box;
}

// A number counts the bones of the skin from 1; 0 is no bone.
std::vector<const host::INode*> BonesOf(const eExportBone& bone, const eBonePalette& palette) {
    std::vector<const host::INode*> bones;
    for (std::size_t entry = 0; entry < palette.count; ++entry) {
        if (const std::size_t number = palette.entries[entry]; number > 0) {
            bones.push_back(bone.mesh.skinBones[number - 1]);
        }
    }
    return bones;
}

void NoteSubMeshes(Export& run, const eExportBone& bone, const eSubMeshes& subMeshes) {
    if (eNodeNote* const note = NoteOf(run, *bone.node)) {
        for (const eExportSubMesh& subMesh : subMeshes.list) {
            const bool isSkinned = (subMesh.flags & kSubMeshSkinned) != 0;
            note->subMeshes.push_back(
                {.material = GetMaterialName(subMesh.material),
                 .triangles = subMesh.triangleCount,
                 .palette = isSkinned
                                ? BonesOf(bone, bone.palettes[static_cast<std::size_t>(subMesh.palette)])
                                : std::vector<const host::INode*>()});
        }
    }
}

// The file is made of the assembled vertices alone, and a model's meshes need not lie in memory side by side.
// The first positions stay: a node that comes too late to feed the mesh asks for their bounds.
void ForgetFaces(eExportMesh& mesh) {
    eExportMesh kept;
    kept.frames.emplace_back().positions = std::move(mesh.frames.front().positions);
    kept.skinBones = std::move(mesh.skinBones);
    mesh = std::move(kept);
}

void WriteAssembly(Export& run, xIo::eStream& stream, eExportBone& bone, const eMeshAssembly& assembly,
                   bool skinned) {
    TellStraySkinBones(run, bone);
    if (IsSharedMirrored(run, *bone.node)) {
        TellMirroredView(run, *bone.node);
    }
    ForgetFaces(bone.mesh);
    const eAnimatedTextureBlock animatedTexture(run, *bone.node);
    eSubMeshes subMeshes = BuildSubMeshes(run, bone, assembly, skinned);
    if (subMeshes.lostTriangles) {
        TellOfNode(run, eMessageId::MeshDegenerate, *bone.node);
    }
    if (run.meshOrderObserver) {
        run.meshOrderObserver(MeasureOrder(CleanNodeName(bone.node->GetName(), true), assembly, subMeshes));
    }
    NoteSubMeshes(run, bone, subMeshes);
    eFinalMesh mesh = RenumberVertices(subMeshes, assembly.vertices.size());
    bone.vertexCount = static_cast<int>(mesh.vertexCount);
    WriteMeshBody(run, stream,
                  {.bounds = BoundsOf(assembly.vertices),
                   .skinned = skinned,
                   .format = assembly.format,
                   .absent = bone.colorsAllWhite ? VF_COLOR : 0,
                   .bone = bone,
                   .subMeshes = subMeshes,
                   .welded = assembly.vertices,
                   .mesh = mesh});
    bone.mesh.vertexRemap = std::move(mesh.vertexRemap);
}

}  // namespace

bool WriteMesh(Export& run, xIo::eStream& stream, int boneIndex) {
    eExportBone& bone = run.model->bones[static_cast<std::size_t>(boneIndex)];
    bone.isWritten = true;
    if (!HasFaces(run, bone)) {
        return false;
    }
    StartProgress(run, Words(ePhrase::StageMesh).russian);
    CompleteFrames(bone.mesh);
    const bool lit = PrepareLights(run, *bone.node, bone.matrix);
    ComputeTangents(run, bone);
    ++run.model->meshCounter;
    StartProgress(run, Words(ePhrase::StageTriangles, bone.node->GetName(), run.model->meshCounter,
                             run.model->boneCount)
                           .russian);
    const bool skinned = PrepareSkin(bone);
    bone.colorsAllWhite = true;
    const eMeshAssembly assembly = AssembleMesh(run, boneIndex, lit, skinned);
    if (!FitsFile(run, bone, assembly)) {
        return false;
    }
    KeepFramesFinite(run, boneIndex, assembly.vertices);
    WriteAssembly(run, stream, bone, assembly, skinned);
    return true;
}
