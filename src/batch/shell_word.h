#pragma once

#include <string>

namespace batch {

// A word of a POSIX shell in quotes that leave every letter as it is.
inline std::string ShellWord(const std::string& word) {
    std::string text = "'";
    for (const char letter : word) {
        text += letter == '\'' ? "'\\''" : std::string(1, letter);
    }
    return text + "'";
}

}  // namespace batch
