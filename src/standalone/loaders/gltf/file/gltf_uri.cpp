#include "standalone/loaders/gltf/file/gltf_uri.h"

#include <array>
#include <charconv>
#include <utility>

namespace standalone {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kLastDigit = 63;
constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> kDigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::size_t i = 0; i < kDigits.size(); ++i) {
        values[static_cast<unsigned char>(kDigits[i])] = static_cast<std::uint8_t>(i);
    }
    return values;
}();

// Up to four digits as the upper of 24 bits. `seen` gathers all bits of digits, and those of what is none.
std::uint32_t BitsOf(std::string_view digits, std::uint8_t& seen) {
    std::uint32_t bits = 0;
    int shift = 18;
    for (const char digit : digits) {
        const std::uint8_t value = kDigitValues[static_cast<unsigned char>(digit)];
        seen |= value;
        bits |= std::uint32_t{value} << shift;
        shift -= 6;
    }
    return bits;
}

}  // namespace

std::string DecodeUri(std::string_view uri) {
    std::string text;
    text.reserve(uri.size());
    for (std::size_t i = 0; i < uri.size(); ++i) {
        unsigned char byte = 0;
        if (uri[i] == '%' && uri.size() - i > 2) {
            const char* digits = uri.data() + i + 1;
            const auto [end, error] = std::from_chars(digits, digits + 2, byte, 16);
            if (error == std::errc() && end == digits + 2) {
                text += static_cast<char>(byte);
                i += 2;
                continue;
            }
        }
        text += uri[i];
    }
    return text;
}

std::string FolderOfFile(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string FileOfUri(const std::string& folder, std::string_view uri) {
    const std::string file = DecodeUri(uri);
    return file.starts_with('/') || folder.empty() ? file : folder + "/" + file;
}

std::optional<eDataUri> SplitDataUri(std::string_view uri) {
    constexpr std::string_view kMark = ";base64";
    const std::size_t comma = uri.find(',');
    if (!IsDataUri(uri) || comma == std::string_view::npos || !uri.substr(0, comma).ends_with(kMark)) {
        return std::nullopt;
    }
    const std::string_view head = uri.substr(5, comma - 5 - kMark.size());
    return eDataUri{head.substr(0, head.find(';')), uri.substr(comma + 1)};
}

std::optional<std::vector<std::uint8_t>> DecodeBase64(std::string_view text) {
    while (text.ends_with('=')) {
        text.remove_suffix(1);
    }
    if (text.size() % 4 == 1) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes(text.size() * 3 / 4);
    std::uint8_t seen = 0;
    std::size_t done = 0;
    for (; text.size() >= 4; text.remove_prefix(4), done += 3) {
        const std::uint32_t bits = BitsOf(text.substr(0, 4), seen);
        bytes[done] = static_cast<std::uint8_t>(bits >> 16);
        bytes[done + 1] = static_cast<std::uint8_t>(bits >> 8);
        bytes[done + 2] = static_cast<std::uint8_t>(bits);
    }
    for (std::uint32_t rest = BitsOf(text, seen); done < bytes.size(); rest <<= 8) {
        bytes[done++] = static_cast<std::uint8_t>(rest >> 16);
    }
    return seen <= kLastDigit ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace standalone
