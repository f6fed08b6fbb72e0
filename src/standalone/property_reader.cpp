#include "standalone/property_reader.h"

#include <algorithm>
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

// FNV-1a over the lower-case letters.
std::uint32_t HashKey(std::string_view key) {
    std::uint32_t hash = 2166136261U;
    for (const char byte : key) {
        hash = (hash ^ static_cast<unsigned char>(platform::LowerAnsiByte(byte))) * 16777619U;
    }
    return hash;
}

}  // namespace

eUserProperties::eUserProperties(std::string_view text) {
    const auto lineCount = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    hashes.reserve(lineCount);
    lines.reserve(lineCount);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
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
