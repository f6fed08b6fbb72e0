#pragma once

#include "host/mesh.h"

// The normal of a face's corner in object space, not always of unit length: the one set by the artist where
// it is marked explicit, else that of the render vertex which serves the face's smoothing groups. The mesh's
// normals must have been built.
host::Point3 GetCornerNormal(const host::Mesh& mesh, int face, int corner);
