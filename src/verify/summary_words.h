#pragma once

#include <string>

#include "base/bilingual.h"

namespace verify {

// A kind of finding or a heading, whose English word is its name, in the language, UTF-8. Any other text
// comes back as it is.
std::string SummaryWord(const std::string& english, eLanguage language);

}  // namespace verify
