#pragma once

class Export;
struct eExportBone;

// Tells which bones of a skinned mesh the skeleton of the model does not hold, with the reason of each, and
// which of its hidden bones have got into the mesh with their own geometry, as members of its group.
void TellStraySkinBones(Export& run, const eExportBone& bone);
