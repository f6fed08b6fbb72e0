#include "batch/wildcards.h"

namespace batch {

namespace {

bool MatchesFolders(std::string_view path, std::string_view rest) {
    for (std::size_t begin = 0;; ++begin) {
        if (MatchesPattern(path.substr(begin), rest)) {
            return true;
        }
        begin = path.find('/', begin);
        if (begin == std::string_view::npos) {
            return false;
        }
    }
}

bool MatchesLetters(std::string_view path, std::string_view rest) {
    for (std::size_t length = 0;; ++length) {
        if (MatchesPattern(path.substr(length), rest)) {
            return true;
        }
        if (length == path.size() || path[length] == '/') {
            return false;
        }
    }
}

}  // namespace

bool HasWildcards(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

bool MatchesPattern(std::string_view path, std::string_view pattern) {
    if (pattern.starts_with("**/")) {
        return MatchesFolders(path, pattern.substr(3));
    }
    if (pattern.starts_with('*')) {
        return MatchesLetters(path, pattern.substr(1));
    }
    if (pattern.empty() || path.empty()) {
        return pattern.empty() && path.empty();
    }
    const bool isSame = pattern[0] == path[0] || (pattern[0] == '?' && path[0] != '/');
    return isSame && MatchesPattern(path.substr(1), pattern.substr(1));
}

}  // namespace batch
