#include "standalone/jpeg_tables.h"

#include <algorithm>
#include <numeric>

namespace standalone {

namespace {

constexpr std::uint8_t kHuffmanTables = 0xC4;

// Restarts, begin and end of the picture, and what is no marker at all stand without content.
bool HasContent(std::uint8_t marker) {
    constexpr std::uint8_t kFirstRestart = 0xD0, kEnd = 0xD9, kTemporary = 0x01;
    return marker > kTemporary && (marker < kFirstRestart || marker > kEnd);
}

// `tables` runs to the end of the file, as the library reads on behind the segment where a table says so.
bool TablesFit(std::span<const std::uint8_t> tables, int length) {
    constexpr std::size_t kHead = 17;  // class and number, then the codes of each length from 1 to 16
    constexpr int kMostCodes = 256;
    while (length > 0 && !tables.empty()) {
        const auto counts = tables.subspan(1, std::min(kHead, tables.size()) - 1);
        const int codes = std::accumulate(counts.begin(), counts.end(), 0);
        if (codes > kMostCodes) {
            return false;
        }
        const std::size_t size = kHead + static_cast<std::size_t>(codes);
        tables = tables.subspan(std::min(size, tables.size()));
        length -= static_cast<int>(size);
    }
    return true;
}

}  // namespace

bool HuffmanTablesFit(std::span<const std::uint8_t> file) {
    std::size_t at = 0;
    const auto byte = [&](std::size_t place) { return place < file.size() ? file[place] : std::uint8_t{0}; };
    while (at < file.size()) {
        if (file[at] != 0xFF) {
            ++at;
            continue;
        }
        while (byte(at) == 0xFF) {
            ++at;
        }
        const std::uint8_t marker = byte(at++);
        if (!HasContent(marker)) {
            continue;
        }
        const int length = byte(at) * 256 + byte(at + 1);
        if (marker == kHuffmanTables && at + 2 < file.size() &&
            !TablesFit(file.subspan(at + 2), length - 2)) {
            return false;
        }
        at += static_cast<std::size_t>(length);
    }
    return true;
}

}  // namespace standalone
