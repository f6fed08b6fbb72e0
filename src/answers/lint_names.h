#pragma once

#include "answers/node_lint.h"
#include "answers/scene_names.h"

namespace answers {

// Names of nodes, sets and files: a node's own that mixes alphabets, and those in properties that nothing in
// the scene has.
void LintNames(eNodeLint& lint, const eSceneNames& names);

}  // namespace answers
