#pragma once

#include "io/name.h"
#include "run/resource_set.h"
#include "scene/shared_view.h"

namespace host {
class INode;
}  // namespace host

// The set of a Structure that waits while a model nested in it fills another one, or none.
struct eWaitingCommonSet {
    host::INode* owner = nullptr;
    eName folder;
    eExportResourceSet resources;
    eSharedMeshes sharedMeshes;
};
