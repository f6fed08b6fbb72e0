#pragma once

#include <cstddef>

#include "host/object.h"
#include "host/values.h"
#include "scene/export_bone.h"

class Export;

// One reading of one node's geometry: from where, at which moment, into which frame of which bone.
struct eNodeReading {
    Export& run;
    host::INode& node;
    host::INode& root;  // whose space the mesh stands in
    eExportBone& bone;
    host::Modifier* skin;  // null without
    host::TimeValue time;
    int meshFrame;  // within the frames of the bone's mesh

    eExportMeshFrame& Frame() const { return bone.mesh.frames[static_cast<std::size_t>(meshFrame)]; }
    // Only the first frame fills what the frames share: faces, materials, skin.
    bool IsFirstFrame() const { return meshFrame == 0; }
};

// How a reading brings the node's object into the root's space.
struct eReadingSpace {
    host::Matrix3 toBone;        // object points to the root's space; the root's own scale is taken out
    host::Matrix3 normalMatrix;  // the transposed inverse, for normals
    bool mirrored = false;

    // The host's corner that is stored as corner c: a mirrored face is turned round, so that it stays visible
    // from the same side.
    int HostCorner(int c) const { return mirrored ? 2 - c : c; }
};
