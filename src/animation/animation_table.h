#pragma once

class Export;

namespace host {
class INode;
}  // namespace host

// Fills `animations` from the properties of the current root, in their order:
//
//     animation=NAME,SELECTION SET,FIRST-LAST,FILE,SPEED
//
// with "animationresume" and "animationauto" as the other keys. What is missing or wrong is told.
void ReadAnimations(Export& run);

// True if an animation of that selection set (-1: none) covers the node; a group member is covered as its
// group is. Constant in the size of the set.
bool AnimationTouchesNode(Export& run, const host::INode& node, int selection);

// Writes the block of the animations that the game can't know from their .anm alone: another file, a speed,
// a way of starting. Nothing if there is none.
void WriteAnimationBlock(Export& run);
