#include "mesh/build/mesh_assembly.h"

#include <algorithm>
#include <array>
#include <bit>

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

template <class T>
bool AreSameBytes(const T& a, const T& b) {
    using eBytes = std::array<std::uint32_t, sizeof(T) / sizeof(std::uint32_t)>;
    return std::bit_cast<eBytes>(a) == std::bit_cast<eBytes>(b);
}

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
          weld(mesh.faces.size() * 3, lastAt.size()) {}

    eMeshAssembly Assemble() {
        const std::size_t step = std::max<std::size_t>(mesh.faces.size() / 100, 1);
        for (std::size_t face = 0; face < mesh.faces.size() && !assembly.isCancelled;) {
            for (const std::size_t end = std::min(face + step, mesh.faces.size()); face < end; ++face) {
                AddFace(face);
            }
            if (face % step == 0) {
                run.host->ProgressUpdate(static_cast<int>(face * 100 / mesh.faces.size()));
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

    // What a face says of its three corners in one frame; null for a channel that they have not or that is
    // the same for all of them.
    struct eFaceChannels {
        const std::uint32_t* numbers;  // of the positions
        std::uint32_t smoothingGroup;
        const host::Point3* normals;
        const std::uint32_t* colors;
        const host::Point2* uv0;
        const host::Point2* uv1;
        const host::Point4* tangents;
    };

    void AddFace(std::size_t face) {
        ChooseKind(mesh.faces[face].material, skinned ? mesh.facePalettes[face] : 0);
        const eExportMeshFrame& first = mesh.frames.front();
        const eFaceChannels channels = ChannelsOf(face, first);
        const eTriangle triangle = {NumberOf(channels, 0), NumberOf(channels, 1), NumberOf(channels, 2)};
        EstimateTextureSize(*kind.use, PositionsOf(channels, first), first.mapCoords0[face]);
        if (mesh.frames.size() > 1) {
            AddToFrames(face, triangle);
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

    eFaceChannels ChannelsOf(std::size_t face, const eExportMeshFrame& frame) const {
        const bool hasTangents = kind.bump && face < frame.tangents.size();
        return {.numbers = mesh.faces[face].v,
                .smoothingGroup = mesh.faces[face].smGroup,
                .normals = lit ? nullptr : frame.cornerNormals[face].data(),
                .colors = frame.colors[face].data(),
                .uv0 = frame.mapCoords0[face].data(),
                .uv1 = kind.uvCount > 1 ? frame.mapCoords1[face].data() : nullptr,
                .tangents = hasTangents ? frame.tangents[face].data() : nullptr};
    }

    static eCorners<host::Point3> PositionsOf(const eFaceChannels& channels, const eExportMeshFrame& frame) {
        const std::uint32_t* const numbers = channels.numbers;
        return {frame.positions[numbers[0]], frame.positions[numbers[1]], frame.positions[numbers[2]]};
    }

    // The welded vertex of a corner as it stands in the first frame.
    std::uint16_t NumberOf(const eFaceChannels& channels, std::size_t corner) {
        std::uint16_t& last = lastAt[channels.numbers[corner]];
        if (last != eVertexWeld::kNone && IsVertex(channels, corner, weld.Vertices()[last])) {
            return last;
        }
        const eExportVertex vertex = MakeVertex(channels, corner, mesh.frames.front());
        const std::uint16_t number = weld.FindOrAdd(vertex);
        // A near vertex has another position or skin, and the same corner may become yet another one when it
        // is looked for again.
        last = AreSameBytes(weld.Vertices()[number], vertex) ? number : eVertexWeld::kNone;
        return number;
    }

    // Whether a corner is to the last bit the vertex that another one at its position was. Five of six are,
    // and need not be put together: the position's number stands for the skin too, and the subset for the
    // format.
    bool IsVertex(const eFaceChannels& channels, std::size_t corner, const eExportVertex& vertex) const {
        return vertex.subset == kind.blank.subset && vertex.smoothingGroup == channels.smoothingGroup &&
               vertex.color == channels.colors[corner] && AreSameBytes(vertex.uv0, channels.uv0[corner]) &&
               (channels.normals == nullptr || AreSameBytes(vertex.normal, channels.normals[corner])) &&
               (channels.uv1 == nullptr || AreSameBytes(vertex.uv1, channels.uv1[corner])) &&
               (channels.tangents == nullptr || AreSameBytes(vertex.tangent, channels.tangents[corner]));
    }

    // The same fields at every corner of a face.
    eExportVertex MakeVertex(const eFaceChannels& channels, std::size_t corner,
                             const eExportMeshFrame& frame) {
        const std::uint32_t number = channels.numbers[corner];
        eExportVertex vertex = kind.blank;
        vertex.position = frame.positions[number];
        vertex.smoothingGroup = channels.smoothingGroup;
        vertex.normal = channels.normals != nullptr ? channels.normals[corner] : host::Point3{0, 0, 1};
        vertex.color = channels.colors[corner];
        vertex.uv0 = channels.uv0[corner];
        vertex.uv1 = channels.uv1 != nullptr ? channels.uv1[corner] : host::Point2();
        vertex.tangent = channels.tangents != nullptr ? channels.tangents[corner] : host::Point4();
        if (skinned) {
            SetSkin(vertex, mesh.vertexSkins[number]);
        }
        if (vertex.color != kOpaqueWhite) {
            bone.colorsAllWhite = false;
        }
        return vertex;
    }

    // Corners that share a vertex in the first frame share it in every frame.
    void AddToFrames(std::size_t face, const eTriangle& triangle) {
        for (std::size_t number = 0; number < mesh.frames.size(); ++number) {
            const eExportMeshFrame& frame = mesh.frames[number];
            if (frame.positions.empty()) {
                continue;
            }
            const eFaceChannels channels = ChannelsOf(face, frame);
            if (eExportFrame* const kept = run.motion->frames.OfMeshFrame(number)) {
                for (std::size_t corner = 0; corner < 3; ++corner) {
                    KeepInFrameTable(*kept, triangle[corner], MakeVertex(channels, corner, frame));
                }
            }
            if (number != 0) {
                EstimateTextureSize(*kind.use, PositionsOf(channels, frame), frame.mapCoords0[face]);
            }
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
    std::vector<std::uint16_t> lastAt;  // by position: the vertex that the last corner there was
    eVertexWeld weld;
    eFaceKind kind;
    eMeshAssembly assembly;
};

}  // namespace

eMeshAssembly AssembleMesh(Export& run, int boneIndex, bool lit, bool skinned) {
    return eMeshAssembler(run, boneIndex, lit, skinned).Assemble();
}
