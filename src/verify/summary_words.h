#pragma once

#include <string>

#include "base/bilingual.h"

namespace verify {

// A kind of finding or a heading, whose English word is its name, in the language, UTF-8. Any other text
// comes back as it is.
std::string SummaryWord(const std::string& english, eLanguage language);

// A number with the things that it counts, or with its unit, whose English word is given; with nothing behind
// it for any other word.
std::string Counted(const std::string& number, const std::string& english, eLanguage language);

}  // namespace verify
