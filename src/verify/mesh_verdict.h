#pragma once

#include <string>

#include "verify/finding.h"

namespace verify {

// How a mesh of a file compares with the scene. Kinds of findings: "missing mesh", "broken mesh", "missing
// triangle", "foreign triangle", "moved triangle", "turned triangle", "map coordinates", "normal", "colour",
// "material", "weights", "skin".
struct eMeshVerdict {
    std::string name;
    std::string file;
    int triangles = 0;      // that the scene shows
    int found = 0;          // of them, in the file
    int hidden = 0;         // hidden faces
    int degenerate = 0;     // folded up when their corners were joined
    int repeated = 0;       // the same triangle once more
    int refused = 0;        // of a mesh or node that no file can hold
    std::string refusal{};  // why
    // The largest differences of the triangles found.
    double metres = 0;  // along an axis
    double map = 0;
    double degrees = 0;  // between normals
    double color = 0;    // of 255
    double weight = 0;
    eFindings findings{};
};

}  // namespace verify
