#include "base/ansi.h"

#include <algorithm>

std::string ToUtf8(std::string_view ansi) {
    return platform::Utf8FromAnsi(ansi);
}

eFromUtf8 FromUtf8(std::string_view utf8) {
    eFromUtf8 result;
    result.text.reserve(utf8.size());
    for (std::string_view rest = utf8; !rest.empty();) {
        const platform::eUtf8Step step = platform::ReadUtf8(rest);
        const int byte = step.length != 0 ? platform::AnsiByte(step.character) : -1;
        if (byte < 0 && result.IsExact()) {
            result.badOffset = utf8.size() - rest.size();
        }
        result.text += byte < 0 ? '_' : static_cast<char>(byte);
        rest.remove_prefix(std::max<std::size_t>(step.length, 1));
    }
    return result;
}

std::string LowerAnsi(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), platform::LowerAnsiByte);
    return lower;
}

bool EqualNoCase(std::string_view left, std::string_view right) {
    return left.size() == right.size() && CompareNoCase(left, right) == 0;
}

int CompareNoCase(std::string_view left, std::string_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t index = 0; index < common; ++index) {
        const auto leftByte = static_cast<unsigned char>(platform::LowerAnsiByte(left[index]));
        const auto rightByte = static_cast<unsigned char>(platform::LowerAnsiByte(right[index]));
        if (leftByte != rightByte) {
            return leftByte < rightByte ? -1 : 1;
        }
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

std::string LowerAscii(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerAsciiByte);
    return lower;
}

bool EqualNoAsciiCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return LowerAsciiByte(a) == LowerAsciiByte(b); });
}
