#pragma once

#include "base/bilingual.h"

namespace cli {

// What the terminal speaks: English until the program has found out what its user reads.
void UseLanguage(eLanguage language);
eLanguage TerminalLanguage();

}  // namespace cli
