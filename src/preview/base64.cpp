#include "preview/base64.h"

#include <cstdint>

namespace preview {

std::string Base64(std::string_view bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = bytes.size() - i < 3 ? bytes.size() - i : 3;
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = group << 8U | (k < count ? static_cast<std::uint8_t>(bytes[i + k]) : 0U);
        }
        for (std::size_t digit = 0; digit < 4; ++digit) {
            text += digit <= count ? kDigits[group >> (18 - 6 * digit) & 0x3FU] : '=';
        }
    }
    return text;
}

}  // namespace preview
