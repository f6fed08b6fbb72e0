#include "answers/look_alike.h"

#include <algorithm>

#include "base/ansi.h"

namespace answers {
namespace {

// The same places hold the letters that look alike.
constexpr std::string_view kCyrillic = "АВЕКМНОРСТХаеорсухі"_ansi;
constexpr std::string_view kLatin = "ABEKMHOPCTXaeopcyxi";
static_assert(kCyrillic.size() == kLatin.size());

bool IsLatin(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

bool IsCyrillic(char letter) {
    constexpr int kFirst = 0xC0;  // from there on the page has letters only
    const auto byte = static_cast<unsigned char>(letter);
    return byte >= kFirst || kCyrillic.find(letter) != std::string_view::npos;
}

bool AllLookAlike(std::string_view word, bool (*isOf)(char), std::string_view alphabet) {
    return std::ranges::all_of(
        word, [&](char letter) { return !isOf(letter) || alphabet.find(letter) != std::string_view::npos; });
}

bool IsMixed(std::string_view word) {
    return std::ranges::any_of(word, IsLatin) && std::ranges::any_of(word, IsCyrillic) &&
           (AllLookAlike(word, IsCyrillic, kCyrillic) || AllLookAlike(word, IsLatin, kLatin));
}

}  // namespace

std::string InLatin(std::string_view text) {
    std::string latin(text);
    for (char& letter : latin) {
        const std::size_t place = kCyrillic.find(letter);
        letter = place != std::string_view::npos ? kLatin[place] : letter;
    }
    return latin;
}

bool MixesAlphabets(std::string_view text) {
    const auto isLetter = [](char byte) { return IsLatin(byte) || IsCyrillic(byte); };
    for (const char* at = text.begin(); at != text.end();) {
        const char* const begin = std::find_if(at, text.end(), isLetter);
        at = std::find_if_not(begin, text.end(), isLetter);
        if (IsMixed({begin, at})) {
            return true;
        }
    }
    return false;
}

}  // namespace answers
