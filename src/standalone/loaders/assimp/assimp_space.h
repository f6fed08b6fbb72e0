// From the spaces of the file to those of the host: metres, z up.
//
// The world is turned and scaled by `toHost`. A node's own space is turned and scaled by its `frame`, so that
// what the artist built upright with a plain transform stays so:
//
// - below a root whose y axis points up (content of a y-up program) the points are turned too, as glTF's are;
//   below any other root they keep their axes;
// - a scale at the root that only undoes the file's unit (1 unit is a centimetre, the root is 100 times as
//   large) goes away: the content is in metres already;
// - cameras and lights look along their -z in the host, along other axes in the file.
#pragma once

#include "standalone/loaders/assimp/assimp_import.h"

namespace standalone {

// Rows for columns: the host multiplies from the left.
host::Matrix3 HostMatrix(const aiMatrix4x4& matrix);

// A node's transform in the file, relative to its parent, without animation.
host::Matrix3 StillFileMatrix(const eAssimpNode& node);

// Reads unit and axes of the file, and gives every node its frame.
void MakeAssimpFrames(eAssimpImport& import);

// The transform that says the matrix: its parts where they say it, else the matrix.
eTransform TransformOf(const host::Matrix3& matrix);

// The parts that come nearest to the matrix. False, too, where it has a shear that they can't say.
bool SplitMatrix(const host::Matrix3& matrix, ePlacement& parts);

}  // namespace standalone
