#pragma once

#include "verify/verified_scene.h"
#include "written/exact_space.h"

namespace verify {

// The matrix of a node against the bone above it, its scale taken out, in metres, as the scene has it; that
// of a model's root is mirrored into the engine's space.
host::DMatrix3 PlaceInBoneAbove(const eVerifiedScene& scene, const host::INode& node, host::TimeValue time,
                                bool isRoot);

using written::AngleBetween;

bool IsMirrored(const host::DMatrix3& m);
// True if the axes have length 1 and stand at right angles, mirrored or not: all that the engine's rotations
// can hold.
bool IsRotation(const host::DMatrix3& m);
// Between the axes of two matrices of one handedness, in degrees.
double AngleBetween(const host::DMatrix3& a, const host::DMatrix3& b);

}  // namespace verify
