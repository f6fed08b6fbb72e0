#include "standalone/loaders/fbx/fbx_arrays.h"

#include <zlib.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

namespace standalone {
namespace {

constexpr std::size_t kMostPacking = 1032;  // what deflate reaches with one byte over and over

std::string_view FromNumberOn(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t\r\n,"), text.size()));
}

std::vector<double> NumbersOfText(std::string_view text) {
    std::vector<double> numbers;
    text = FromNumberOn(text.substr(text.find(':') + 1));
    while (!text.empty()) {
        double number = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
        if (read.ec != std::errc()) {
            return {};
        }
        numbers.push_back(number);
        text = FromNumberOn(text.substr(static_cast<std::size_t>(read.ptr - text.data())));
    }
    return numbers;
}

std::string Unpacked(std::string_view packed, std::size_t length) {
    const bool isCredible = length / kMostPacking <= packed.size();
    if (!isCredible || !std::in_range<uLong>(length) || !std::in_range<uLong>(packed.size())) {
        return {};
    }
    std::string bytes(length, '\0');
    auto got = static_cast<uLongf>(length);
    const int status =
        uncompress(reinterpret_cast<Bytef*>(bytes.data()), &got,
                   reinterpret_cast<const Bytef*>(packed.data()), static_cast<uLong>(packed.size()));
    return status == Z_OK && got == length ? bytes : std::string();
}

template <class Element>
std::vector<double> Elements(std::string_view bytes) {
    std::vector<double> numbers;
    for (std::size_t at = 0; at + sizeof(Element) <= bytes.size(); at += sizeof(Element)) {
        Element element{};
        std::memcpy(&element, bytes.data() + at, sizeof element);
        numbers.push_back(static_cast<double>(element));
    }
    return numbers;
}

std::vector<double> NumbersOfBytes(std::string_view bytes, char letter) {
    switch (letter) {
        case 'd':
            return Elements<double>(bytes);
        case 'f':
            return Elements<float>(bytes);
        case 'l':
            return Elements<std::int64_t>(bytes);
        case 'i':
            return Elements<std::int32_t>(bytes);
        default:
            return Elements<std::uint8_t>(bytes);
    }
}

}  // namespace

std::size_t FbxElementWidth(char letter) {
    switch (letter) {
        case 'd':
        case 'l':
            return 8;
        case 'f':
        case 'i':
            return 4;
        case 'b':
        case 'c':
            return 1;
        default:
            return 0;
    }
}

std::vector<double> NumbersOf(const eFbxArray& array) {
    if (array.letter == '\0') {
        return NumbersOfText(array.stored);
    }
    return array.isPacked
               ? NumbersOfBytes(Unpacked(array.stored, array.count * FbxElementWidth(array.letter)),
                                array.letter)
               : NumbersOfBytes(array.stored, array.letter);
}

}  // namespace standalone
