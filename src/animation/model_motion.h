#pragma once

#include <vector>

#include "animation/export_animation.h"
#include "animation/frame_table.h"
#include "animation/selection_members.h"

// The animations of the current model.
struct eModelMotion {
    std::vector<eExportAnimation> animations;
    eFrameTable frames;
    eSelectionMembers selectionMembers;  // of the sets asked for so far in the run
};
