#pragma once

#include "answers/node_lint.h"

namespace answers {

// Values of known keys that are out of their form, and what the game does not get of a value. What the run
// tells by itself is left to it.
void LintValues(eNodeLint& lint);

}  // namespace answers
