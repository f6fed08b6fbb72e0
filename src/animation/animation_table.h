#pragma once

#include "messages/message_place.h"

class Export;
struct eExportAnimation;

namespace host {
class INode;
}  // namespace host

// Where what is told of an animation belongs: the root that declares it.
eMessagePlace PlaceOf(const Export& run, const eExportAnimation& animation);

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
