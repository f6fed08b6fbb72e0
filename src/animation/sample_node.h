#pragma once

#include "host/node.h"

class Export;

// Samples every animation of the table that touches the node into the entries of its own bone in the frame
// table, and reports on animWriter what was stored. A node that is no bone of its own, as the members of
// groups, has no pose there and is left alone: what it adds to the mesh of a bone follows that bone.
//
// A pose enters a frame only where it differs from the last one stored: position by more than 0.001 metres in
// a component, rotation by more than 0.00001 in a component of the quaternion. First and last frame of an
// animation always hold everything.
//
// At most two evaluations of the host per frame; memory for the text, and for the matrices of one node.
void SampleNode(Export& run, host::INode& node);
