#pragma once

#include <string>

#include "io/name.h"

// What a run has made of one model, for whoever called it.
struct eModelReport {
    std::string root;      // name of the root node, as the host has it
    eName folder;          // empty until it is settled
    int bones = 0;         // detail levels included
    int meshes = 0;        // written, to the model's own or the common set
    int materials = 0;     // records that the model added to its own or the common set
    int animations = 0;    // written to .anm files
    bool skipped = false;  // left out: its error has been told, or the run ended before its files were whole
};
