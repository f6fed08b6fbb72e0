#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "base/bilingual.h"

namespace cli {

// Adds `--language ru|en`: what messages and answers are printed in.
CLI::Option* AddLanguageFlag(CLI::App& command, std::string& language);

// Without the flag the language of the user decides: Russian for a Russian locale, else English.
eLanguage LanguageOf(const std::string& flag);

}  // namespace cli
