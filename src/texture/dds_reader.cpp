#include "texture/dds_reader.h"

#include <algorithm>
#include <array>

#include "base/format.h"
#include "base/number_text.h"
#include "texture/level_encoder.h"
#include "texture/mip_chain.h"

namespace {

// Places of header fields in the file.
constexpr std::size_t sizePlace = 4;
constexpr std::size_t heightPlace = 12;
constexpr std::size_t widthPlace = 16;
constexpr std::size_t firstLevelPlace = 20;
constexpr std::size_t mipCountPlace = 28;
constexpr std::size_t pixelFormatPlace = 76;
constexpr std::size_t moreCapabilitiesPlace = 112;

void Report(eDdsFile& dds, std::size_t offset, std::string text) {
    dds.problems.push_back({offset, std::move(text)});
}

void ReportDamage(eDdsFile& dds, std::size_t offset, std::string text) {
    dds.problems.push_back({offset, std::move(text), true});
}

void CheckSize(eDdsFile& dds, std::size_t place, const char* name, std::uint32_t value,
               std::uint32_t expected) {
    if (value != expected) {
        Report(dds, place, (format("%1% is %2%, not %3%") % name % value % expected).Text());
    }
}

bool HasLegalSides(eDdsFile& dds) {
    const auto isLegal = [&](std::size_t place, const char* name, std::uint32_t side) {
        const bool legal = side >= 1 && side <= maxTextureSide;
        if (!legal) {
            ReportDamage(dds, place,
                         (format("%1% is %2%, not within 1 to %3%") % name % side % maxTextureSide).Text());
        }
        return legal;
    };
    const bool heightIsLegal = isLegal(heightPlace, "height", dds.header.height);
    return isLegal(widthPlace, "width", dds.header.width) && heightIsLegal;
}

bool FindCoding(eDdsFile& dds) {
    if (dds.header.moreCapabilities != 0) {
        Report(dds, moreCapabilitiesPlace, "cube maps and volumes are not read");
        return false;
    }
    dds.coding = CodingOfPixelFormat(dds.header.pixelFormat);
    if (!dds.coding) {
        Report(dds, pixelFormatPlace, "unknown pixel format: " + PixelFormatName(dds.header.pixelFormat));
    }
    return dds.coding.has_value();
}

// How many levels to look for.
unsigned ClaimedLevels(eDdsFile& dds) {
    const unsigned full = FullLevelCount(dds.header.width, dds.header.height);
    const std::uint32_t claimed = std::max<std::uint32_t>(1, dds.header.mipCount);
    if (claimed > full) {
        Report(dds, mipCountPlace,
               (format("mip count %1%, but the size has %2% levels only") % claimed % full).Text());
    }
    return std::min(claimed, full);
}

void FindLevels(eDdsFile& dds, std::size_t fileSize) {
    const unsigned claimed = ClaimedLevels(dds);
    std::size_t offset = ddsMagic.size() + ddsHeaderSize;
    unsigned width = dds.header.width;
    unsigned height = dds.header.height;
    for (unsigned level = 0; level < claimed; level++) {
        const std::uint64_t byteCount =
            LevelBytes(*dds.coding, dds.header.pixelFormat.bitCount, width, height);
        if (byteCount > fileSize - offset) {
            ReportDamage(dds, offset,
                         (format("level %1% of %2% by %3% takes %4% bytes, the file has %5% left") % level %
                          width % height % byteCount % (fileSize - offset))
                             .Text());
            return;
        }
        dds.levels.push_back({width, height, offset, static_cast<std::size_t>(byteCount)});
        offset += static_cast<std::size_t>(byteCount);
        width = std::max(1U, width / 2);
        height = std::max(1U, height / 2);
    }
    if (offset < fileSize) {
        Report(dds, offset, (format("%1% bytes behind the last level") % (fileSize - offset)).Text());
    }
}

void CheckFirstLevel(eDdsFile& dds) {
    constexpr std::uint32_t sizeHolds = 0x80000;
    if (dds.levels.empty() || (dds.header.flags & sizeHolds) == 0) {
        return;
    }
    const std::size_t byteCount = dds.levels.front().byteCount;
    if (dds.header.firstLevelBytes != byteCount) {
        Report(dds, firstLevelPlace,
               (format("the header gives the first level %1% bytes, its size takes %2%") %
                dds.header.firstLevelBytes % byteCount)
                   .Text());
    }
}

std::string HexText(std::uint32_t number) {
    std::array<char, numberTextSize> text;
    return {text.data(), WriteHexText(text.data(), number)};
}

std::string FourCcName(std::uint32_t fourCc) {
    std::string name;
    for (int byte = 0; byte < 4; byte++) {
        const auto letter = static_cast<char>(fourCc >> (8 * byte));
        if (letter < ' ' || letter > '~') {
            return "FourCC " + HexText(fourCc);
        }
        name += letter;
    }
    return name;
}

}  // namespace

eDdsFile ReadDds(std::span<const std::uint8_t> file) {
    eDdsFile dds;
    if (file.size() < ddsMagic.size() || !std::ranges::equal(file.first(ddsMagic.size()), ddsMagic)) {
        ReportDamage(dds, 0, "no DDS file: it doesn't begin with \"DDS \"");
        return dds;
    }
    if (file.size() < ddsMagic.size() + ddsHeaderSize) {
        ReportDamage(dds, file.size(), "the file ends within its header");
        return dds;
    }
    eDdsHeaderBytes headerBytes;
    std::ranges::copy(file.subspan(ddsMagic.size(), ddsHeaderSize), headerBytes.begin());
    dds.header = ReadDdsHeader(headerBytes);
    CheckSize(dds, sizePlace, "header size", dds.header.size, ddsHeaderSize);
    CheckSize(dds, pixelFormatPlace, "pixel format size", dds.header.pixelFormatSize, ddsPixelFormatSize);
    const bool sidesAreLegal = HasLegalSides(dds);
    if (FindCoding(dds) && sidesAreLegal) {
        FindLevels(dds, file.size());
        CheckFirstLevel(dds);
    }
    return dds;
}

const eDdsProblem* FirstDamage(const eDdsFile& dds) {
    const auto found = std::ranges::find_if(dds.problems, &eDdsProblem::isDamage);
    return found != dds.problems.end() ? &*found : nullptr;
}

ePixelImage DecodeDdsLevel(std::span<const std::uint8_t> file, const eDdsFile& dds, std::size_t level) {
    const eDdsLevel& place = dds.levels[level];
    return DecodeLevel(file.subspan(place.offset, place.byteCount), *dds.coding, dds.header.pixelFormat,
                       place.width, place.height);
}

std::string PixelFormatName(const eDdsPixelFormat& pixelFormat) {
    if ((pixelFormat.flags & ddsIsFourCc) != 0) {
        return FourCcName(pixelFormat.fourCc);
    }
    return (format("%1% bits, masks %2% %3% %4% %5%") % pixelFormat.bitCount % HexText(pixelFormat.redMask) %
            HexText(pixelFormat.greenMask) % HexText(pixelFormat.blueMask) % HexText(pixelFormat.alphaMask))
        .Text();
}
