#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// Tells a node whose geometry stands in the mesh of another node's bone, but which an animation moves against
// that bone, or shows and hides apart from it: the game gets the bone's pose and visibility only. A mesh that
// is animated by frames (`keepsMotion`) has the motion in its vertices, and a skinned node follows its own
// bones.
//
// Up to four evaluations of the host per frame, none behind the first frame of an animation that differs.
void TellFeederMotion(Export& run, const host::INode& feeder, const host::INode& bone, bool keepsMotion);
