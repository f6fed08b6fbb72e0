#pragma once

#include <string>
#include <vector>

#include "inspect/sdl_tree.h"
#include "written/exact_space.h"
#include "written/written_file.h"

namespace written {

// A bone of a model text.
struct eWrittenBone {
    std::string name;
    int above = -1;                             // its number in the list, -1 for the root
    host::DMatrix3 local;                       // against the bone above, metres
    std::vector<std::string> views;             // meshes that it shows, with the way to their folder
    const inspect::eSdlBlock* block = nullptr;  // all that is said of it, in the model's text
};

// A model text as the engine reads it, by the order of the bones in it.
struct eWrittenModel {
    inspect::eSdlBlock text;
    std::vector<eWrittenBone> bones;
    std::string problem;  // why it can't be read; empty if it can

    // -1 if no bone has the name.
    int NumberOf(const std::string& name) const;
};

eWrittenModel ReadWrittenModel(const eName& file);

// A whole text through the layer of files in use; the problem as above.
inspect::eSdlBlock ReadWrittenText(const eName& file, std::string& problem);

}  // namespace written
