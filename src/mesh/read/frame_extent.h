#pragma once

#include <cstddef>

#include "geometry/export_mesh.h"

// How much of a mesh a frame holds. Every frame that is written must hold as much as the first one: the
// frames share faces, and a face is found by its number in all of them.
struct eFrameExtent {
    std::size_t vertices = 0;
    std::size_t faces = 0;

    friend bool operator==(const eFrameExtent&, const eFrameExtent&) = default;
};

eFrameExtent ExtentOf(const eExportMeshFrame& frame);

// Takes what lies behind the extent out of the frame.
void CutFrame(eExportMeshFrame& frame, const eFrameExtent& extent);

// Brings the frame to the extent with what the first frame has there: that part of the mesh stands still.
void FillFromFirstFrame(const eExportMesh& mesh, eExportMeshFrame& frame, const eFrameExtent& extent);
