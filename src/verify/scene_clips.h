#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "verify/scene_model.h"

namespace verify {

// A named range of frames that a file should hold.
struct eSceneClip {
    std::string name;
    eName file;
    int firstFrame = 0;
    int lastFrame = 0;
    bool coversAll = false;                            // every node that the options let move
    std::unordered_set<const host::INode*> covered{};  // else these
    // Later clips that have frames and nodes of this one: an export keeps one key for a node and a frame,
    // that of the clip declared last.
    std::vector<std::string> overwrittenBy{};
    // What the definition says of it, in words with blanks between; empty where all is as without a word.
    std::string inDefinition{};

    int FrameCount() const { return lastFrame - firstFrame + 1; }
    // The scene's time at a frame of the file, counted from 0.
    host::TimeValue TimeOf(const eVerifiedScene& scene, int frame) const;
    // True if the clip moves the node, or the group that it is part of.
    bool Covers(const eVerifiedScene& scene, const host::INode& node) const;
};

// The clips that the root declares and an export writes, without those whose file a later one takes.
std::vector<eSceneClip> FindClips(const eVerifiedScene& scene, const eSceneModel& model);

// True if clips hold the bone at all: lines, and bones that only the numbering knows, stand still.
bool MayMove(const eVerifiedScene& scene, const eSceneBone& bone);

}  // namespace verify
