#pragma once

#include <cstdint>

#include "host/values.h"

// Which channels a vertex has; the layout of the bits is that of the mesh file.
using VertexFormat = std::uint32_t;

inline constexpr VertexFormat VF_POSITION = 0x0001;
inline constexpr VertexFormat VF_NORMAL = 0x0002;
inline constexpr VertexFormat VF_COLOR = 0x0004;
inline constexpr VertexFormat VF_TANGENT = 0x0100;
inline constexpr int kUvCountShift = 4;      // bits 4 to 7: sets of map coordinates
inline constexpr int kWeightCountShift = 9;  // bits 9 and 10: stored weights

// One vertex of a mesh under assembly.
struct eExportVertex {
    host::Point3 position;                       // metres, bone space
    float weights[2] = {0, 0};                   // the third weight is 1 minus their sum
    std::uint8_t boneIndices[4] = {0, 0, 0, 0};  // three local palette indices, then 0
    host::Point3 normal;
    std::uint32_t color = 0;  // 0xAARRGGBB
    host::Point2 uv0;
    host::Point2 uv1;
    int subset = 0;  // index of the face's entry in the material map
    host::Point4 tangent;
    std::uint32_t smoothingGroup = 0;
    VertexFormat format = 0;
};
