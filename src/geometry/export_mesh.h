#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "host/mesh.h"
#include "host/values.h"

namespace host {
class INode;
class Mtl;
}  // namespace host

inline constexpr int kInfluencesPerCorner = 3;
inline constexpr int kBonesPerPalette = 25;
inline constexpr int kBonesPerSkin = 255;  // a bone number is 8 bits wide, and 0 means no bone

// The skin of one face: per corner and influence a bone and its weight.
struct eExportFaceSkin {
    // 0 means no bone, n means skinBones[n - 1]; once palettes are built, the index in the face's palette.
    std::uint8_t bones[3][kInfluencesPerCorner] = {};
    float weights[3][kInfluencesPerCorner] = {};  // sum 1 where any bone is assigned
    std::int32_t palette = -1;                    // number of the face's palette

    // Every corner follows the entry for no bone.
    static eExportFaceSkin WithoutBones() {
        eExportFaceSkin skin;
        for (auto& corner : skin.weights) {
            corner[0] = 1;
        }
        return skin;
    }
};

// The bones that one sub-mesh sees, by rising number; the value 0, for no bone, takes an entry like any bone.
struct eBonePalette {
    std::uint8_t count = 0;
    std::uint8_t entries[kBonesPerPalette] = {};
};

// The three corners of a face, in the corner order of the stored face.
template <class T>
using eCorners = std::array<T, 3>;

// What one mesh frame holds. The per-face vectors run parallel to eExportMesh::faces.
struct eExportMeshFrame {
    std::vector<host::Point3> positions;  // all vertices of all nodes that contribute; metres, bone space
    std::vector<host::Point3> faceNormals;
    std::vector<eCorners<host::Point3>> cornerNormals;  // unit length, bone space
    std::vector<eCorners<host::Point3>> mapCoords0;     // u, v already flipped (1 - v), w
    std::vector<eCorners<host::Point3>> mapCoords1;
    std::vector<eCorners<host::AColor>> colors;    // light times vertex colour; alpha
    std::vector<eCorners<host::Point4>> tangents;  // x, y, z and the sign of the bitangent
};

// The face soup of one bone: every node that feeds the bone appends to it.
struct eExportMesh {
    std::vector<eExportMeshFrame> frames;    // one, unless the mesh is animated by frames
    std::vector<host::INode*> faceNodes;     // per face: the node that it came from
    std::vector<host::Face> faces;           // vertex numbers into `positions`
    std::vector<std::uint16_t> vertexRemap;  // final vertex index to welded vertex index
    std::vector<std::pair<host::Mtl*, std::uint32_t>>
        faceMaterials;                       // leaf material, may be null; material id
    std::vector<eExportFaceSkin> faceSkins;  // per face, skinned meshes only
    std::vector<host::INode*> skinBones;     // the bones of the skin in its own order
};
