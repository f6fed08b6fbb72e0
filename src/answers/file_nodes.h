#pragma once

#include <vector>

#include "io/name.h"
#include "scene/run_journal.h"

namespace answers {

// The nodes that feed a file of the run, in the order of the scene.
std::vector<const host::INode*> NodesOf(const eRunJournal& journal, const eName& path, const eFileNote& file);

}  // namespace answers
