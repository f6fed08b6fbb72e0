#pragma once

#include <string>
#include <vector>

#include "verify/finding.h"

namespace verify {

// The largest difference of something over the frames of a clip, and where it stands.
struct eWorst {
    double amount = 0;
    int frame = 0;  // counted from 0 at the clip's first frame

    void Meet(double value, int at) {
        if (value > amount) {
            amount = value;
            frame = at;
        }
    }
};

// A bone in a clip.
struct eBoneVerdict {
    std::string name{};
    eWorst metres{};   // against the bone above, along an axis: what leaving keys out costs
    eWorst degrees{};  // against the bone above
    eWorst inModel{};  // metres, with the differences of all bones above
    int sheared = 0;   // frames in which the scene's matrix is no rotation: it can't be stored
};

// A clip in the files. Kinds of findings: "missing clip", "broken clip", "length", "missing bone", "foreign
// bone", "unknown pose", "position", "rotation", "mirror", "visibility", "vertices", "bent skin".
struct eClipVerdict {
    std::string name;
    std::string file;
    int frames = 0;
    std::vector<std::string> overwrittenBy{};  // later clips that have taken keys of this one
    std::vector<eBoneVerdict> bones{};
    int frameMeshes = 0;     // meshes whose vertices the clip moves
    eWorst vertices{};       // of theirs, metres along an axis
    int skins = 0;           // skinned meshes that were bent in some of the frames
    eWorst skin{};           // of their vertices, metres, what bones beyond the third would have done with it
    double bind = 0;         // metres between the skin at rest and the pose of the static frame
    int otherwiseBound = 0;  // skins that are so far off that they were bound in another pose
    eWorst motion{};         // of the vertices of those, from where the bones of the scene would move them
    eFindings findings{};
};

}  // namespace verify
