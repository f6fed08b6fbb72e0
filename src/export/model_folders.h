#pragma once

#include <optional>

#include "io/name.h"

class Export;

namespace host {
class INode;
}  // namespace host

// Where the files of a model go, by the "Model" of its root; nothing without one.
std::optional<eName> FolderOfModel(const Export& run, const host::INode& root);

// Settles where the files of the current model go, and the folder that it shares with others, and creates
// both. False if nothing can be written: the root has no "Model" (it is only checked), or its path has a
// drive or leads out of what may be written, which is told.
bool SettleFolders(Export& run);
