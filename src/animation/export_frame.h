#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "geometry/export_vertex.h"
#include "host/values.h"

namespace host {
class INode;
}  // namespace host

// Bits of eExportFrameBone::flags; the animation file holds them as they stand.
inline constexpr std::uint16_t kFramePosition = 0x0001;
inline constexpr std::uint16_t kFrameRotation = 0x0002;
inline constexpr std::uint16_t kFrameMirrored = 0x0004;  // one row of the matrix was negated
inline constexpr std::uint16_t kFrameVisible = 0x0008;
inline constexpr std::uint16_t kFrameHidden = 0x0010;
inline constexpr std::uint16_t kFrameVertices = 0x0020;

// The vertices of a mesh animated by frames, in one frame, in the order of the welded mesh.
struct eExportFrameMesh {
    std::vector<eExportVertex> vertices;
    int vertexSize = 0;  // bytes of each vertex in the file
};

// What one bone stores in one frame; flags 0 means nothing. A long timeline has millions of these, so the
// pose is kept as the files hold it, and the rare mesh apart: 48 bytes.
struct eExportFrameBone {
    host::Point3 position;                   // relative to the parent, metres
    host::Quat rotation;                     // relative to the parent
    std::uint16_t flags = 0;                 // here, where it fills a gap
    host::INode* node = nullptr;             // the node that filled this entry
    std::unique_ptr<eExportFrameMesh> mesh;  // null without vertices
};
static_assert(sizeof(eExportFrameBone) <= 48);

// One frame of the timeline.
struct eExportFrame {
    std::vector<eExportFrameBone> bones;  // by bone number
};
