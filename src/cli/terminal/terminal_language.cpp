#include "cli/terminal/terminal_language.h"

namespace cli {

namespace {

eLanguage spoken = eLanguage::English;

}  // namespace

void UseLanguage(eLanguage language) {
    spoken = language;
}

eLanguage TerminalLanguage() {
    return spoken;
}

}  // namespace cli
