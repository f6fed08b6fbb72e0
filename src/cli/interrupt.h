#pragma once

namespace cli {

// From now on the first Ctrl-C is a wish to cancel; the second one ends the process at once.
void CatchInterrupts();

bool IsInterrupted();

}  // namespace cli
