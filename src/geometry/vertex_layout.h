#pragma once

#include <cstring>

#include "geometry/export_vertex.h"

// How a vertex lies in the mesh file and in the animation file. Its format word says which fields it has;
// they follow one another without padding, little-endian:
//
//   field             present when                     size             content
//   position          always                           12               x, y, z in metres, bone space
//   weights           weightCount (bits 9, 10) not 0   4 * weightCount  the first weights; the next is 1 -
//   sum bones             weightCount not 0                4                three palette indices, then 0
//   normal            VF_NORMAL                        12               x, y, z, unit length
//   colour            VF_COLOR                         4                blue, green, red, alpha
//   map coordinates   uvCount (bits 4 to 7) not 0      8 * uvCount      per set u, v
//   tangent           VF_TANGENT                       16               x, y, z, sign of the bitangent
//
// Bit 3 is never set; it counts 4 bytes in the size, and no field stands for it.

inline int UvCount(VertexFormat format) {
    return static_cast<int>(format >> kUvCountShift & 0xFU);
}
inline int WeightCount(VertexFormat format) {
    return static_cast<int>(format >> kWeightCountShift & 0x3U);
}

// `bones` influences per vertex need one weight less; 0 stands for a mesh without skin.
inline VertexFormat MakeVertexFormat(bool normal, bool color, int uvCount, int bones, bool tangent) {
    return VF_POSITION | (normal ? VF_NORMAL : 0) | (color ? VF_COLOR : 0) |
           static_cast<VertexFormat>(uvCount) << kUvCountShift | (tangent ? VF_TANGENT : 0) |
           static_cast<VertexFormat>(bones > 0 ? bones - 1 : 0) << kWeightCountShift;
}

// The bytes of one vertex.
inline int VertexFormatSize(VertexFormat format) {
    constexpr VertexFormat kUnnamedField = 0x0008;
    int size = (format & VF_POSITION) != 0 ? 12 : 0;
    size += (format & VF_NORMAL) != 0 ? 12 : 0;
    size += (format & VF_COLOR) != 0 ? 4 : 0;
    size += (format & kUnnamedField) != 0 ? 4 : 0;
    size += 8 * UvCount(format);
    size += (format & VF_TANGENT) != 0 ? 16 : 0;
    const int weights = WeightCount(format);
    return weights != 0 ? size + 4 * weights + 4 : size;
}

// Calls visit(field, bytes) for each field that `format` has, in the order above.
template <class Vertex, class Visit>
void ForEachVertexField(Vertex& vertex, VertexFormat format, Visit visit) {
    visit(&vertex.position, 12);
    if (const int weights = WeightCount(format); weights != 0) {
        visit(vertex.weights, 4 * static_cast<std::size_t>(weights < 2 ? weights : 2));
        visit(vertex.boneIndices, 4);
    }
    if ((format & VF_NORMAL) != 0) {
        visit(&vertex.normal, 12);
    }
    if ((format & VF_COLOR) != 0) {
        visit(&vertex.color, 4);
    }
    if (UvCount(format) > 0) {
        visit(&vertex.uv0, 8);
    }
    if (UvCount(format) > 1) {
        visit(&vertex.uv1, 8);
    }
    if ((format & VF_TANGENT) != 0) {
        visit(&vertex.tangent, 16);
    }
}

// Writes the fields that `format` has and returns the end of what it wrote.
inline std::uint8_t* PackVertex(const eExportVertex& vertex, VertexFormat format, std::uint8_t* buffer) {
    ForEachVertexField(vertex, format, [&buffer](const void* field, std::size_t size) {
        std::memcpy(buffer, field, size);
        buffer += size;
    });
    return buffer;
}
inline std::uint8_t* PackVertex(const eExportVertex& vertex, std::uint8_t* buffer) {
    return PackVertex(vertex, vertex.format, buffer);
}

// Reads the fields of `format` back; `buffer` holds VertexFormatSize(format) bytes.
inline eExportVertex UnpackVertex(VertexFormat format, const std::uint8_t* buffer) {
    eExportVertex vertex;
    vertex.format = format;
    ForEachVertexField(vertex, format, [&buffer](void* field, std::size_t size) {
        std::memcpy(field, buffer, size);
        buffer += size;
    });
    return vertex;
}
