#include "mesh/build/mesh_assembly.h"

#include <algorithm>

#include "animation/model_motion.h"
#include "geometry/vertex_layout.h"
#include "material/queries/dum_mtl.h"
#include "material/queries/material_queries.h"
#include "material/run_materials.h"
#include "mesh/build/texture_size_estimate.h"
#include "mesh/build/weld.h"
#include "run/export.h"
#include "scene/current_model.h"

namespace {

class eMeshAssembler {
public:
    eMeshAssembler(Export& ownRun, int ownBoneIndex, bool ownLit, bool ownSkinned)
        : run(ownRun),
          boneIndex(ownBoneIndex),
          bone(run.model->bones[static_cast<std::size_t>(ownBoneIndex)]),
          mesh(bone.mesh),
          lit(ownLit),
          skinned(ownSkinned),
          lastAt(mesh.frames.front().positions.size(), eVertexWeld::kNone),
          weld(mesh.faces.size() * 3) {}

    eMeshAssembly Assemble() {
        const std::size_t step = std::max<std::size_t>(mesh.faces.size() / 100, 1);
        for (std::size_t face = 0; face < mesh.faces.size() && !assembly.isCancelled; ++face) {
            AddFace(face);
            if ((face + 1) % step == 0) {
                run.host->ProgressUpdate(static_cast<int>((face + 1) * 100 / mesh.faces.size()));
                assembly.isCancelled = run.host->GetCancel();
            }
        }
        assembly.vertices = weld.TakeVertices();
        return std::move(assembly);
    }

private:
    // What a material and a palette mean for a face; asked of the host once for a run of alike faces.
    struct eFaceKind {
        std::uint32_t material = 0;  // of the soup
        std::int32_t palette = 0;
        eExportMaterialUse* use = nullptr;
        bool bump = false;
        int uvCount = 0;
        eExportVertex blank;                           // what all vertices have in common
        std::uint8_t placeOf[kBonesPerSkin + 1] = {};  // by bone number, in the palette
    };

    void AddFace(std::size_t face) {
        ChooseKind(mesh.faces[face].material, skinned ? mesh.facePalettes[face] : 0);
        eTriangle triangle{};
        for (std::size_t frame = 0; frame < mesh.frames.size(); ++frame) {
            if (mesh.frames[frame].positions.empty()) {
                continue;
            }
            AddCorners(face, frame, triangle);
            EstimateTextureSize(*kind.use, PositionsOf(face, mesh.frames[frame]),
                                mesh.frames[frame].mapCoords0[face]);
        }
        assembly.subsets[static_cast<std::size_t>(kind.use->index)].push_back(triangle);
        ++assembly.triangles;
    }

    void ChooseKind(std::uint32_t material, std::int32_t palette) {
        if (kind.use != nullptr && kind.material == material && kind.palette == palette) {
            return;
        }
        const auto& [leaf, materialId] = mesh.materials[material];
        const eExportMaterialKey key{leaf != nullptr ? leaf : &PlaceholderMaterial(), palette};
        kind = {};
        kind.material = material;
        kind.palette = palette;
        kind.use = &UseOf(key, materialId);
        kind.bump = GetBumpAmount(key.material) != 0;
        const bool twoMaps = kind.bump || GetSpecularAmount(key.material) != 0;
        kind.uvCount = twoMaps ? 1 : std::min(GetSlotCount(key.material), 2);
        kind.blank.subset = kind.use->index;
        kind.blank.format =
            MakeVertexFormat(true, true, kind.uvCount, skinned ? bone.bonesPerVertex : 0, kind.bump);
        if (VertexFormatSize(kind.blank.format) > VertexFormatSize(assembly.format)) {
            assembly.format = kind.blank.format;
        }
        if (skinned) {
            const eBonePalette& bones = bone.palettes[static_cast<std::size_t>(palette)];
            for (std::uint8_t place = 0; place < bones.count; ++place) {
                kind.placeOf[bones.entries[place]] = place;
            }
        }
    }

    // The entry of the material map, and a subset for it.
    eExportMaterialUse& UseOf(const eExportMaterialKey& key, std::uint32_t materialId) {
        const eExportMaterialUse fresh{.index = static_cast<int>(run.materials->materialMap.size()),
                                       .materialId = static_cast<int>(materialId),
                                       .node = bone.node};
        eExportMaterialUse& use = run.materials->materialMap.try_emplace(key, fresh).first->second;
        const auto index = static_cast<std::size_t>(use.index);
        assembly.subsets.resize(std::max(assembly.subsets.size(), index + 1));
        return use;
    }

    eCorners<host::Point3> PositionsOf(std::size_t face, const eExportMeshFrame& frame) const {
        const auto& v = mesh.faces[face].v;
        return {frame.positions[v[0]], frame.positions[v[1]], frame.positions[v[2]]};
    }

    // The first frame makes the triangle, the others follow it: corners that share a vertex there share it in
    // every frame.
    void AddCorners(std::size_t face, std::size_t frame, eTriangle& triangle) {
        eExportFrame* const kept = mesh.frames.size() > 1 ? run.motion->frames.OfMeshFrame(frame) : nullptr;
        const eExportFace& record = mesh.faces[face];
        eExportVertex vertex = kind.blank;
        vertex.smoothingGroup = record.smGroup;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            const std::uint32_t number = record.v[corner];
            SetCorner(vertex, face, corner, mesh.frames[frame]);
            vertex.position = mesh.frames[frame].positions[number];
            if (skinned) {
                SetSkin(vertex, mesh.vertexSkins[number]);
            }
            if (frame == 0) {
                triangle[corner] = weld.FindOrAdd(vertex, lastAt[number]);
            }
            if (kept != nullptr) {
                KeepInFrameTable(*kept, triangle[corner], vertex);
            }
        }
    }

    // The same fields at every corner of a face.
    void SetCorner(eExportVertex& vertex, std::size_t face, std::size_t corner,
                   const eExportMeshFrame& frame) {
        vertex.uv0 = frame.mapCoords0[face][corner];
        if (kind.uvCount > 1) {
            vertex.uv1 = frame.mapCoords1[face][corner];
        }
        vertex.normal = lit ? host::Point3{0, 0, 1} : frame.cornerNormals[face][corner];
        vertex.color = frame.colors[face][corner];
        if (vertex.color != kOpaqueWhite) {
            bone.colorsAllWhite = false;
        }
        if (kind.bump && face < frame.tangents.size()) {
            vertex.tangent = frame.tangents[face][corner];
        }
    }

    void SetSkin(eExportVertex& vertex, const eExportVertexSkin& skin) const {
        std::copy_n(skin.weights, 2, vertex.weights);
        for (int k = 0; k < kInfluencesPerCorner; ++k) {
            vertex.boneIndices[k] = kind.placeOf[skin.bones[k]];
        }
    }

    void KeepInFrameTable(eExportFrame& frame, std::uint16_t number, const eExportVertex& vertex) {
        eExportFrameBone& entry = frame.bones[static_cast<std::size_t>(boneIndex)];
        if (entry.mesh == nullptr) {
            entry.mesh = std::make_unique<eExportFrameMesh>();
        }
        entry.flags |= kFrameVertices;
        entry.node = bone.node;
        entry.mesh->vertexSize = VertexFormatSize(assembly.format);
        std::vector<eExportVertex>& vertices = entry.mesh->vertices;
        const std::size_t size = weld.Vertices().size();
        if (vertices.size() < size) {
            eExportVertex empty;
            empty.format = kind.blank.format;
            vertices.resize(size, empty);
        }
        vertices[number] = vertex;
    }

    Export& run;
    int boneIndex;
    eExportBone& bone;
    const eExportMesh& mesh;
    bool lit;
    bool skinned;
    std::vector<std::uint16_t> lastAt;  // by position: the vertex that the last corner there has become
    eVertexWeld weld;
    eFaceKind kind;
    eMeshAssembly assembly;
};

}  // namespace

eMeshAssembly AssembleMesh(Export& run, int boneIndex, bool lit, bool skinned) {
    return eMeshAssembler(run, boneIndex, lit, skinned).Assemble();
}
