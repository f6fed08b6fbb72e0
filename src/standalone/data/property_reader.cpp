#include "standalone/data/property_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "base/ansi.h"

namespace standalone {

namespace {

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::array<std::uint8_t, 256> MakeLowerBytes() {
    std::array<std::uint8_t, 256> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(platform::LowerAnsiByte(static_cast<char>(i)));
    }
    return bytes;
}

// FNV-1a over the lower-case letters.
std::uint32_t HashKey(std::string_view key) {
    static const std::array<std::uint8_t, 256> lowerBytes = MakeLowerBytes();
    std::uint32_t hash = 2166136261U;
    for (const char byte : key) {
        hash = (hash ^ lowerBytes[static_cast<std::uint8_t>(byte)]) * 16777619U;
    }
    return hash;
}

}  // namespace

eUserProperties::eUserProperties(std::string_view text) {
    const auto lineCount = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    hashes.reserve(lineCount);
    lines.reserve(lineCount);
    while (!text.empty()) {
        const auto isLineEnd = [](char byte) { return byte == '\r' || byte == '\n'; };
        const auto end = static_cast<std::size_t>(std::ranges::find_if(text, isLineEnd) - text.begin());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty()) {
            continue;
        }
        const std::size_t equals = std::min(line.find('='), line.size());
        const std::string_view key = Trim(line.substr(0, equals));
        lines.push_back({key, Trim(line.substr(std::min(equals + 1, line.size())))});
        hashes.push_back(HashKey(key));
    }
}

std::optional<std::string_view> eUserProperties::Find(std::string_view key) const {
    const std::uint32_t hash = HashKey(key);
    for (auto found = std::ranges::find(hashes, hash); found != hashes.end();
         found = std::find(found + 1, hashes.end(), hash)) {
        const eLine& line = lines[static_cast<std::size_t>(found - hashes.begin())];
        if (EqualNoCase(line.key, key)) {
            return line.value;
        }
    }
    return std::nullopt;
}

int ReadInteger(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return 0;
        }
    }
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return text.starts_with('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
    return value;
}

}  // namespace standalone
