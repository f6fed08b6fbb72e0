#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "base/bilingual.h"

namespace cli {

// Adds `--language ru|en`: what messages and answers are printed in. LanguageOf takes its value.
CLI::Option* AddLanguageFlag(CLI::App& command);

// The language of a call, of which no word needs to be right: that of `--language` where it stands on the
// line, else that of the user, Russian for a Russian locale and English for any other.
eLanguage LanguageOf(const std::vector<std::string>& arguments);

}  // namespace cli
