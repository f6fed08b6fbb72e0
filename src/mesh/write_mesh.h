#pragma once

#include "io/streams/stream.h"

class Export;

// Appends the mesh of the bone to the stream: welded, grouped into sub-meshes, in strip order. False if the
// bone has no faces in its first frame or too many vertices; nothing has then been written.
bool WriteMesh(Export& run, xIo::eStream& stream, int boneIndex);
