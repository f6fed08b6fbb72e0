#pragma once

#include "io/name.h"
#include "run/resource_set.h"

namespace host {
class INode;
}  // namespace host

// The sets that models write into: each its own, or one that several share.
struct eResourceSets {
    eExportResourceSet modelResources;
    eExportResourceSet commonResources;
    eName commonFolder;  // of the shared resources
    eName commonPrefix;  // "common/", "../common/" or empty: from the model to the shared resources
    host::INode* commonOwner = nullptr;  // the Structure that owns commonFolder
    bool commonPending = false;          // the set of commonOwner is being filled
};
