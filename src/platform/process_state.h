// What a process has set for all operations of this module: who shows its boxes, who keeps a record of its
// files, which files it works on, where drives lie, what may be written. It stands in one record because a
// plug-in module has a copy of this code of its own, and works with the record of the program that has loaded
// it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/file_events.h"
#include "platform/message_box.h"
#include "platform/path_lookup.h"

namespace platform {

class eFileLayer;

struct eWriteRoot {
    std::string path;
    ePathForm form = ePathForm::Resource;
    std::string found;  // its NativeCaseKey, once it is there
};

struct eProcessState {
    eMessageBoxSink messageBoxSink;
    eFileObserver fileObserver;
    eFileLayer* fileLayer = nullptr;     // null: the disk
    std::map<char, std::string> drives;  // native folder by lower-case letter
    std::vector<eWriteRoot> writeRoots;
};

// The record in use.
eProcessState& ProcessState();

// Puts another record in use, which stays the caller's; null goes back to this code's own one.
void UseProcessState(eProcessState* state);

}  // namespace platform
