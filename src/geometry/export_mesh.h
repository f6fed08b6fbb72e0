#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "geometry/face_values.h"
#include "host/values.h"

namespace host {
class INode;
class Mtl;
}  // namespace host

inline constexpr int kInfluencesPerCorner = 3;
inline constexpr int kBonesPerPalette = 25;
inline constexpr int kBonesPerSkin = 255;  // a bone number is 8 bits wide, and 0 means no bone

// One triangle of the face soup.
struct eExportFace {
    std::uint32_t v[3] = {0, 0, 0};  // vertex numbers into `positions`
    std::uint32_t smGroup = 0;       // smoothing groups, a bit mask
    std::uint32_t material = 0;      // its place in `materials`
};

// The skin of one vertex: per influence a bone and its weight. Without more it follows the entry for no bone.
struct eExportVertexSkin {
    float weights[kInfluencesPerCorner] = {1};      // sum 1 where any bone is assigned
    std::uint8_t bones[kInfluencesPerCorner] = {};  // 0 means no bone, n means skinBones[n - 1]
};

// The bones that one sub-mesh sees, by rising number; the value 0, for no bone, takes an entry like any bone.
struct eBonePalette {
    std::uint8_t count = 0;
    std::uint8_t entries[kBonesPerPalette] = {};
};

// The three corners of a face, in the corner order of the stored face.
template <class T>
using eCorners = std::array<T, 3>;

inline constexpr std::uint32_t kOpaqueWhite = 0xFFFFFFFF;

// What one mesh frame holds. The values per face run parallel to eExportMesh::faces.
struct eExportMeshFrame {
    std::vector<host::Point3> positions;  // all vertices of all nodes that contribute; metres, bone space
    std::vector<eCorners<host::Point3>> cornerNormals;  // unit length, bone space
    std::vector<eCorners<host::Point2>> mapCoords0;     // u, v already flipped (1 - v)
    eFaceValues<eCorners<host::Point2>> mapCoords1{eCorners<host::Point2>{{{0, 1}, {0, 1}, {0, 1}}}};
    // 0xAARRGGBB: light times vertex colour; alpha
    eFaceValues<eCorners<std::uint32_t>> colors{
        eCorners<std::uint32_t>{kOpaqueWhite, kOpaqueWhite, kOpaqueWhite}};
    std::vector<eCorners<host::Point4>> tangents;  // x, y, z and the sign of the bitangent
};

// The face soup of one bone: every node that feeds the bone appends to it. 80 bytes a face and 12 a vertex;
// what few meshes have comes on top.
struct eExportMesh {
    std::vector<eExportMeshFrame> frames;  // one, unless the mesh is animated by frames
    std::vector<host::INode*> faceNodes;   // those that faces came from
    std::vector<eExportFace> faces;
    std::vector<std::uint16_t> vertexRemap;                       // final vertex index to welded vertex index
    std::vector<std::pair<host::Mtl*, std::uint32_t>> materials;  // leaf material, may be null; material id
    std::vector<eExportVertexSkin> vertexSkins;  // parallel to the positions, skinned meshes only
    std::vector<std::int32_t> facePalettes;      // per face the number of its palette, skinned meshes only
    std::vector<host::INode*> skinBones;         // the bones of the skin in its own order
};
