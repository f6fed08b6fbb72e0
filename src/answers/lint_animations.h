#pragma once

#include <vector>

#include "messages/message.h"

class Export;

namespace answers {

// Advice on animations of several frames in which nothing of their model moves, hides or bends. Taken from
// what the run has noted; none where it was not asked to.
void LintAnimations(const Export& run, std::vector<eMessage>& advice);

}  // namespace answers
