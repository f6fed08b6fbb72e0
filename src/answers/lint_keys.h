#pragma once

#include "answers/node_lint.h"

namespace answers {

// Keys that nobody reads, or that are read where the node's is not: misspelled, in the wrong alphabet, not
// found where they stand, repeated, on a node of another kind, or crippled on their way to the game.
void LintKeys(eNodeLint& lint);

}  // namespace answers
