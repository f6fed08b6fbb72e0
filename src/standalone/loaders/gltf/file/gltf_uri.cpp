#include "standalone/loaders/gltf/file/gltf_uri.h"

#include <array>
#include <charconv>

namespace standalone {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> kDigitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::size_t i = 0; i < kDigits.size(); ++i) {
        values[static_cast<unsigned char>(kDigits[i])] = static_cast<std::uint8_t>(i);
    }
    return values;
}();

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
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    int bitCount = 0;
    for (const char digit : text) {
        const std::uint8_t value = kDigitValues[static_cast<unsigned char>(digit)];
        if (value == kNoDigit) {
            return std::nullopt;
        }
        bits = bits << 6 | value;
        bitCount += 6;
        if (bitCount >= 8) {
            bitCount -= 8;
            bytes.push_back(static_cast<std::uint8_t>(bits >> bitCount));
        }
    }
    return bytes;
}

}  // namespace standalone
