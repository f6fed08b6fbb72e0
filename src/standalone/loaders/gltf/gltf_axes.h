// From the axes of glTF (y up, right-handed) to those of the host (z up, right-handed).
//
// Everything is turned by the one rotation C: (x, y, z) -> (x, -z, y). Points and directions become p C, and
// transforms C^-1 M C, so that a local transform stays scale, rotation, translation and
// (p M) C = (p C) (C^-1 M C) holds at every node.
//
// What looks along an axis of its own node needs more. Cameras and lights look along their own -z in both
// systems, but the turned node has its old -z at +y. Such a node therefore keeps the local axes of glTF: its
// matrix is C C^-1 M C = M C, "unturned axes" below, and its children and the skins that name it are brought
// back by C^-1.
#pragma once

#include <span>

#include "host/values.h"
#include "standalone/scene_data.h"

namespace standalone {

// p C.
inline host::Point3 ToHostPoint(const host::Point3& p) {
    return {p.x, 0 - p.z, p.y};  // no negative zeros
}

// Where a node's own axes and those of its parent come from.
struct eAxes {
    bool keepsOwn = false;  // the node is a camera or light
    bool parentKeepsOwn = false;
};

// The parts of a local transform. Quaternions are x, y, z, w, of any length but 0, and come out with
// length 1.
host::Point3 ToHostPosition(const host::Point3& translation, const eAxes& axes);
eRotation ToHostRotation(std::span<const float, 4> quaternion, const eAxes& axes);
host::Point3 ToHostScale(const host::Point3& scale, const eAxes& axes);

// Sixteen numbers column by column, for column vectors, as the file has them: the host's rows, with axes.
host::Matrix3 FileMatrix(std::span<const float, 16> columns);
// C^-1 M C, then turned as the axes want.
host::Matrix3 ToHostMatrix(const host::Matrix3& m, const eAxes& axes);

// C, the matrix of a node that keeps its own axes against the turned node.
host::Matrix3 OwnAxes();

}  // namespace standalone
