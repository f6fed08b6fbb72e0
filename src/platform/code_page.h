// Code page 1251, the encoding of all text inside the system.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Unicode characters of the bytes 0x80 to 0xFF. 0x98 has no character; it stands for the control U+0098, so
// that every byte survives a way through UTF-8 and back.
inline constexpr std::array<char16_t, 128> ansiUpperHalf = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC, 0x2030, 0x0409, 0x2039, 0x040A,
    0x040C, 0x040B, 0x040F, 0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6,
    0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407, 0x00B0, 0x00B1, 0x0406, 0x0456,
    0x0491, 0x00B5, 0x00B6, 0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457, 0x0410,
    0x0411, 0x0412, 0x0413, 0x0414, 0x0415, 0x0416, 0x0417, 0x0418, 0x0419, 0x041A, 0x041B, 0x041C, 0x041D,
    0x041E, 0x041F, 0x0420, 0x0421, 0x0422, 0x0423, 0x0424, 0x0425, 0x0426, 0x0427, 0x0428, 0x0429, 0x042A,
    0x042B, 0x042C, 0x042D, 0x042E, 0x042F, 0x0430, 0x0431, 0x0432, 0x0433, 0x0434, 0x0435, 0x0436, 0x0437,
    0x0438, 0x0439, 0x043A, 0x043B, 0x043C, 0x043D, 0x043E, 0x043F, 0x0440, 0x0441, 0x0442, 0x0443, 0x0444,
    0x0445, 0x0446, 0x0447, 0x0448, 0x0449, 0x044A, 0x044B, 0x044C, 0x044D, 0x044E, 0x044F};

// The byte of a character, or -1 if the page lacks it.
constexpr int AnsiByte(char32_t character) {
    if (character < 0x80) {
        return static_cast<int>(character);
    }
    if (character >= 0x0410 && character <= 0x044F) {
        return static_cast<int>(character - 0x0410 + 0xC0);
    }
    for (std::size_t index = 0; index < 0x40; ++index) {
        if (ansiUpperHalf[index] == character) {
            return static_cast<int>(index + 0x80);
        }
    }
    return -1;
}

// One character read from UTF-8.
struct eUtf8Step {
    char32_t character = 0;
    std::size_t length = 0;  // bytes of the character, 0 if the bytes are not well-formed UTF-8
};

// Reads the character at the start of text, which is not empty. Overlong forms, surrogates and values above
// 0x10FFFF are not well-formed.
constexpr eUtf8Step ReadUtf8(std::string_view text) {
    const auto byte = [&](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0u;
    };
    const unsigned first = byte(0);
    if (first < 0x80) {
        return {first, 1};
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) {
        return {};
    }
    char32_t character = first & (0xFFu >> (length + 1));
    for (std::size_t index = 1; index < length; ++index) {
        if ((byte(index) & 0xC0u) != 0x80u) {
            return {};
        }
        character = (character << 6) | (byte(index) & 0x3Fu);
    }
    const bool overlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (overlong || surrogate || character > 0x10FFFF) {
        return {};
    }
    return {character, length};
}

// The lower-case letter of a letter of the page, Latin or Cyrillic; every other byte stays.
char LowerAnsiByte(char byte);

std::string Utf8FromAnsi(std::string_view ansi);

// Nothing if the text is not well-formed or holds a character that the page lacks.
std::optional<std::string> AnsiFromUtf8(std::string_view utf8);

}  // namespace platform
