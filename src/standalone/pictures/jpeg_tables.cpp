#include "standalone/pictures/jpeg_tables.h"

#include <algorithm>
#include <numeric>

namespace standalone {

namespace {

constexpr std::uint8_t kProgressive = 0xC2, kHuffmanTables = 0xC4, kScan = 0xDA;

// Restarts, begin and end of the picture, and what is no marker at all stand without content.
bool HasContent(std::uint8_t marker) {
    constexpr std::uint8_t kFirstRestart = 0xD0, kEnd = 0xD9, kTemporary = 0x01;
    return marker > kTemporary && (marker < kFirstRestart || marker > kEnd);
}

// The Huffman tables of a file on the way through its segments.
class eHuffmanTables {
public:
    bool TakeSegment(std::uint8_t marker, std::span<const std::uint8_t> content, int length) {
        isProgressive |= marker == kProgressive;
        if (marker == kHuffmanTables) {
            return TakeTables(content, length);
        }
        return marker != kScan || HasTablesOf(content);
    }

private:
    // `tables` runs to the end of the file, as the library reads on behind the segment where a table says so.
    bool TakeTables(std::span<const std::uint8_t> tables, int length) {
        constexpr std::size_t kHead = 17;  // class and number, then the codes of each length from 1 to 16
        constexpr int kMostCodes = 256;
        while (length > 0 && !tables.empty()) {
            seen |= Bit(tables[0] >> 4, tables[0] & 15);
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

    // A scan of a progressive picture brings the first coefficient or others, or refines the first, which
    // takes no table.
    bool HasTablesOf(std::span<const std::uint8_t> scan) const {
        const std::size_t components = scan.empty() ? 0 : scan[0];
        const std::size_t parameters = 1 + 2 * components;
        if (scan.size() < parameters + 3) {
            return true;  // the library finds the end itself
        }
        const bool isFirst = scan[parameters] == 0;
        const bool isRefining = scan[parameters + 2] >> 4 != 0;
        for (std::size_t i = 0; i < components; ++i) {
            const std::uint8_t numbers = scan[2 + 2 * i];
            const bool needsDc = !isProgressive || (isFirst && !isRefining);
            const bool needsAc = !isProgressive || !isFirst;
            if ((needsDc && !Has(0, numbers >> 4)) || (needsAc && !Has(1, numbers & 15))) {
                return false;
            }
        }
        return true;
    }

    static std::uint64_t Bit(int tableClass, int number) {
        return std::uint64_t{1} << (16 * (tableClass & 1) + number);
    }
    bool Has(int tableClass, int number) const { return (seen & Bit(tableClass, number)) != 0; }

    bool isProgressive = false;
    std::uint64_t seen = 0;
};

}  // namespace

bool HuffmanTablesFit(std::span<const std::uint8_t> file) {
    eHuffmanTables tables;
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
        if (at + 2 < file.size() && !tables.TakeSegment(marker, file.subspan(at + 2), length - 2)) {
            return false;
        }
        at += static_cast<std::size_t>(length);
    }
    return true;
}

}  // namespace standalone
