#pragma once

#include <string>
#include <vector>

#include "standalone/loaders/gltf/gltf_import.h"

namespace standalone {

// What a channel of an animation moves.
enum class eGltfPath { Position, Rotation, Scale, Weights, Visibility };

struct eGltfChannel {
    int node = 0;  // in the file
    eGltfPath path = eGltfPath::Position;
    int sampler = 0;
};

// An animation of the file on the host's one timeline.
struct eGltfClip {
    int animation = 0;
    std::vector<eGltfChannel> channels;  // those that move a node of the scene
    double shift = 0;                    // whole frames that its own times are moved by
    int firstFrame = 0;                  // on the timeline
    int lastFrame = 0;
};

// Animations that move different targets share the timeline and keep their own times. An animation that moves
// a target which an earlier one moves is laid behind all of those, in the order of the file, with one empty
// frame in front of it. Animations that move nothing in the scene are left out.
std::vector<eGltfClip> LayOutGltfClips(eGltfImport& import, double framesPerSecond);

// A time of the file as a frame. Times are single precision, so that a whole frame comes out a little beside
// itself; within a thousandth it is taken for whole.
double GltfFrame(float seconds, double framesPerSecond);

}  // namespace standalone
