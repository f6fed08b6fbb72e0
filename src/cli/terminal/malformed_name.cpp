#include "cli/terminal/malformed_name.h"

#include <array>
#include <cstdio>
#include <string>

#include "messages/utf8_words.h"
#include "platform/code_page.h"
#include "platform/path_text.h"

namespace cli {
namespace {

std::string WithBytesShown(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = platform::ReadUtf8(text).length;
        std::array<char, 8> byte{};
        std::snprintf(byte.data(), byte.size(), "\\x%02X", static_cast<unsigned char>(text.front()));
        shown += length == 0 ? std::string_view(byte.data()) : text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return shown;
}

}  // namespace

eBilingual MalformedNameProblem(std::string_view text) {
    return platform::PathTextFromUtf8(text) ? eBilingual()
                                            : Utf8Words(ePhrase::PathNotUtf8, WithBytesShown(text));
}

}  // namespace cli
