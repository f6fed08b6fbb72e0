#pragma once

#include "animation/export_animation.h"
#include "host/values.h"
#include "mesh/read/frame_extent.h"

class Export;
struct eExportBone;

namespace host {
class INode;
}  // namespace host

// One node's part of a mesh that is animated by frames. Several nodes feed such a mesh one after the other,
// and not every animation touches each of them, so each frame is brought to the place where the node's part
// begins before the node is read, and to its end afterwards.
class eAnimatedPart {
public:
    // `begin` and `end`: the node's part in the first frame, which has been read.
    eAnimatedPart(Export& run, host::INode& node, host::INode& commonTarget, eExportBone& bone,
                  const eFrameExtent& begin, const eFrameExtent& end);

    // Reads the frames of the animation, but a first one that the static frame serves for (eFrameTable). Of
    // two animations that share a frame the first one gives it. Where the mesh has no frames, or the
    // animation does not cover it, nothing is read, and the motion that is lost is told.
    void ReadFrames(const eExportAnimation& animation);

private:
    bool FeedsStillMesh() const;
    bool ChangesShape(const eExportAnimation& animation) const;
    // `number` is that of the frame on the timeline.
    void ReadFrame(int number, host::TimeValue time);
    void TellStillMesh(const eExportAnimation& animation);
    void TellUncoveredMesh(const eExportAnimation& animation) const;
    void TellOtherShape(int number);

    Export& run;
    host::INode& node;
    host::INode& commonTarget;
    eExportBone& bone;
    eFrameExtent begin;
    eFrameExtent end;
    bool toldStillMesh = false;
    bool toldOtherShape = false;
};
