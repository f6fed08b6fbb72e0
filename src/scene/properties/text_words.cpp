#include "scene/properties/text_words.h"

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string_view> WordsOf(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> words;
    for (std::string_view word = CutToken(text, separators); !word.empty();
         word = CutToken(text, separators)) {
        words.push_back(word);
    }
    return words;
}

std::string_view CutToken(std::string_view& rest, std::string_view separators) {
    const std::size_t first = rest.find_first_not_of(separators);
    if (first == std::string_view::npos) {
        rest = {};
        return {};
    }
    const std::size_t end = rest.find_first_of(separators, first);
    const std::string_view token = rest.substr(first, end - first);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return token;
}
