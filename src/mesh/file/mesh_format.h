#pragma once

// The mesh file ".mesh" of a folder. Numbers are little-endian, nothing is padded; a string is its length
// (one byte below 255; else 0xFF and three bytes) and its bytes in code page 1251. Chunks have no length and
// come in this order.
//
//   size     field                       file
//   4        "PMSH"                      tag of the file
//   4        "MTBL"                      tag of the table
//   4        meshCount                   unsigned, at least 1
//            table                       per mesh: string name; 4 bytes offset of its body behind the table
//            bodies                      one after the other
//
//   size     field                       body
//   4        "MESH"
//   4        "PM01"
//   4 + 24   "BNDS"                      lowest x, y, z and highest x, y, z of all positions: metres, bone
//                                        space
//            "SKIN"                      only of a skinned mesh: 4 bytes boneCount, then boneCount strings
//            "SUBM"                      once per sub-mesh, see below
//   4 + 8    "VERT"                      4 bytes vertexCount, 2 bytes stride, 2 bytes 0
//            vertices                    vertexCount times stride bytes; the layout of each is that of its
//                                        sub-mesh's format (vertex_layout.h), the rest of the stride is 0
//   4 + 4    "INDX"                      4 bytes indexCount, 3 times the triangles of all sub-meshes
//            indices                     2 bytes each
//
//   size     field                       sub-mesh
//   2        format                      low half of the vertex format
//   2        firstTriangle               triangles of the sub-meshes before it
//   2        triangleCount
//   2        firstVertex                 its vertices are the next vertexCount from here, no other's
//   2        vertexCount
//   2        flags                       bit 0 two-sided, bit 1 skinned
//   1        paletteCount                only if skinned, at most 25
//            palette                     paletteCount bytes: 0 no bone, n the n-th name in "SKIN"
//            material                    string
namespace mesh_format {

inline constexpr char kFileTag[] = "PMSH";
inline constexpr char kTableTag[] = "MTBL";
inline constexpr char kBodyTag[] = "MESH";
inline constexpr char kPolygonTag[] = "PM01";
inline constexpr char kBoundsTag[] = "BNDS";
inline constexpr char kSkinTag[] = "SKIN";
inline constexpr char kSubMeshTag[] = "SUBM";
inline constexpr char kVerticesTag[] = "VERT";
inline constexpr char kIndicesTag[] = "INDX";

}  // namespace mesh_format
