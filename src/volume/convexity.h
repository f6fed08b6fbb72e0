#pragma once

#include "host/mesh.h"

// True if no vertex stands above the plane of a face: for each face with the corners p0, p1, p2 and the unit
// normal n, and each vertex v that is none of the face's three, Normalize(v - p0) * n is at most 0.01. The
// tolerance is on the cosine, so the size of the mesh does not matter.
//
// Faces times vertices, but a pass over the vertices costs about a nanosecond each: it only tells whether
// some vertex comes near the tolerance, and the exact test is made for those few.
bool IsConvex(const host::Mesh& mesh);
