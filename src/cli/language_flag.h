#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace cli {

// Adds `--language ru|en`: what the messages of a run are printed in.
CLI::Option* AddLanguageFlag(CLI::App& command, std::string& language);

// Without the flag the language of the user decides: Russian for a Russian locale, else English.
bool SpeaksRussian(const std::string& language);

}  // namespace cli
