#pragma once

#include <string>

// One animation: a named range of the scene's timeline, as declared on a model's root.
struct eExportAnimation {
    std::string name;    // the animation's name in the game
    int selection = -1;  // index of the host's named selection set that limits it to certain nodes
    int firstFrame = 0;  // inclusive
    int lastFrame = 0;   // inclusive
    std::string binary;  // name of the .anm file without extension
    float speed = 0;     // playback speed in per cent; 0 means not given
    bool resume = false;
    bool autostart = false;
    bool inRange = true;  // sampled and written
};
