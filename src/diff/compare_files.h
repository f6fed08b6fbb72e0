#pragma once

#include <string>

#include "diff/change.h"
#include "inspect/sdl_tree.h"
#include "platform/file_layer.h"

namespace diff {

// A file of a tree. What a text includes is unfolded while its repository is at hand, so texts are read at
// once.
struct eFile {
    std::string name;  // below the tree, code page 1251
    platform::eFileContent content;
    inspect::eSdlBlock text;  // of a text that the export writes
    std::string problem;      // why the text can't be read, English; empty if it can
};

eFile ReadFile(const std::string& name, platform::eFileContent content);

// The state and the changes between two files of one name; the problem as that of the file.
eFileDifference CompareFiles(const eFile& before, const eFile& after, const eTolerances& tolerances,
                             eBilingual& problem);

}  // namespace diff
