// From the engine's space to that of glTF. The engine's is left-handed with z up; glTF's is right-handed with
// y up, both in metres. Bones below the root are in spaces of their own, which a model's root alone carries
// from one to the other, so that vertices and the places of bones stay as the files have them.
#pragma once

#include <array>

#include "written/exact_space.h"

namespace gltf {

// Behind the matrix of what stands in the engine's space: x, z, y.
host::DMatrix3 ToGltf();

using eQuaternion = std::array<double, 4>;  // x, y, z, w; the right-hand rule of glTF

// Place, rotation and scale of a node; the scale is applied first.
struct ePlacement {
    written::eVector position{};
    eQuaternion rotation{0, 0, 0, 1};
    written::eVector scale{1, 1, 1};
    bool isSheared = false;  // of a matrix whose axes don't stand at right angles: the rotation is the
                             // nearest that keeps the first axis
};

// A mirror becomes a negative scale along z. Scales within a thousandth of 1, which is what the text of a
// model rounds, count as 1.
ePlacement PlacementOf(const host::DMatrix3& matrix);
// The matrix of it; without the shear.
host::DMatrix3 MatrixOf(const ePlacement& placement);

}  // namespace gltf
