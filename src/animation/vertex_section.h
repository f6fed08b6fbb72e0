#pragma once

#include <cstddef>

#include "animation/export_animation.h"
#include "animation/export_frame.h"
#include "geometry/vertex_layout.h"
#include "io/streams/stream_file.h"
#include "scene/export_bone.h"

class Export;

// Two vertices of a mesh in neighbouring frames are the same to the engine: what can be told apart within
// 0.001 is not stored again. A vertex with smoothing group 0 counts as changed in every frame.
bool IsSameVertex(const eExportVertex& a, const eExportVertex& b);

// The vertex section of one bone in one frame of an animation: everything in the first frame, afterwards the
// runs of vertices that changed since the frame before. Writes nothing and gives false if none changed.
bool WriteVertexSection(Export& run, const eExportAnimation& animation, int frame, std::size_t bone,
                        xIo::eFileStream& stream);
