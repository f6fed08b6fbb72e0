#pragma once

#include <vector>

#include "animation/export_animation.h"
#include "animation/frame_table.h"
#include "animation/selection_members.h"
#include "host/values.h"

// Where the node that was sampled last stands, without scale, by number of the animation and by frame from
// its first one on: the bones below it, of which the first is sampled next, stand against that.
struct eLastSampled {
    const host::INode* node = nullptr;
    std::vector<std::vector<host::Matrix3>> matrices;  // none of an animation that does not touch the node
};

// The animations of the current model.
struct eModelMotion {
    std::vector<eExportAnimation> animations;
    eFrameTable frames;
    eLastSampled lastSampled;
    eSelectionMembers selectionMembers;  // of the sets asked for so far in the run
};
