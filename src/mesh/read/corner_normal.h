#pragma once

#include "host/mesh.h"

// The number of the normal that the artist has set for the corner, or -1.
int ArtistNormal(const host::Mesh& mesh, int face, int corner);

// Builds the normals that GetCornerNormal looks at; those around vertices only where a corner needs them.
void BuildCornerNormals(host::Mesh& mesh);

// The normal of a face's corner in object space, not always of unit length: the one set by the artist where
// it is marked explicit, else that of the render vertex which serves the face's smoothing groups.
host::Point3 GetCornerNormal(const host::Mesh& mesh, int face, int corner);
