#pragma once

#include <cstdint>

// The animation file. Numbers are little-endian, floats IEEE 754 single precision; a reader walks the tags in
// their order, and the file ends behind the last frame record.
//
//   size  field
//   4     "EANM"
//   4     version, 0x00060001
//   4     "FRMS"
//   4     number of frames, those without a record included
//   4     "BMAP"
//   4     animatedBones
//         animatedBones names (eStream::WriteString), by bone number
//         frame records
//
// Frame record, only for frames with data; frame numbers rise strictly:
//
//   4     "FRM2"
//   2     frame number, counted from 0 at the animation's first frame
//   1     number of bone records, 1 to 255
//         bone records, by bone number
//
// Bone record:
//
//   1     number of the bone's name in BMAP
//   2     flags of eExportFrameBone
//   12    if kFramePosition: x, y, z in metres, relative to the parent
//   12    if kFrameRotation: x, y, z of a unit quaternion whose w is -sqrt(1 - x^2 - y^2 - z^2)
//         if kFrameVertices: the vertex section
//
// Vertex section:
//
//   4     bytes behind this field, the terminator included
//         blocks
//   8     terminator, zeros: a block with first vertex 0 and count 0
//
// Block; the size of a vertex stands in the mesh file alone:
//
//   4     first vertex, in the order of the mesh file
//   2     number of vertices
//   2     hasBox
//         vertices (geometry/vertex_layout.h)
//   24    if hasBox: lower corner, upper corner
inline constexpr std::uint32_t kAnimationVersion = 0x00060001;
inline constexpr int kMaxAnimatedBones = 255;
// The frame number of a record has 16 bits.
inline constexpr int kMaxAnimationFrames = 65536;
