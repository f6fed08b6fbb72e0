#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "standalone/pictures/image_readers.h"
#include "standalone/pictures/picture_problem.h"
#include "standalone/pictures/tiff/tiff_functions.h"

namespace standalone {

const char* const kPictureFormats = "png, jpg, tga, bmp, psd, gif, tif, dds";

namespace {

// A file in memory as the library reads it; notes when it reads bytes behind the end.
struct eSource {
    std::span<const std::uint8_t> file;
    std::uint64_t position = 0;
    bool ranOut = false;
};

eSource& SourceOf(thandle_t handle) {
    return *static_cast<eSource*>(handle);
}

tmsize_t Read(thandle_t handle, void* data, tmsize_t size) {
    eSource& source = SourceOf(handle);
    const std::uint64_t left =
        source.file.size() - std::min<std::uint64_t>(source.position, source.file.size());
    const std::uint64_t got = std::min(left, static_cast<std::uint64_t>(size));
    if (got != 0) {
        std::memcpy(data, source.file.data() + source.position, static_cast<std::size_t>(got));
    }
    source.position += got;
    source.ranOut |= got < static_cast<std::uint64_t>(size);
    return static_cast<tmsize_t>(got);
}

tmsize_t Write(thandle_t, void*, tmsize_t) {
    return 0;
}

toff_t Seek(thandle_t handle, toff_t offset, int origin) {
    eSource& source = SourceOf(handle);
    source.position = offset + (origin == SEEK_CUR   ? source.position
                                : origin == SEEK_END ? source.file.size()
                                                     : 0);
    return source.position;
}

int Close(thandle_t) {
    return 0;
}

toff_t Size(thandle_t handle) {
    return SourceOf(handle).file.size();
}

// Lends the whole file.
int Map(thandle_t handle, void** data, toff_t* size) {
    const eSource& source = SourceOf(handle);
    *data = const_cast<std::uint8_t*>(source.file.data());
    *size = source.file.size();
    return 1;
}

void Unmap(thandle_t, void*, toff_t) {}

// The library would write its remarks to the terminal.
int Ignore(TIFF*, void*, const char*, const char*, va_list) {
    return 1;
}

// Once DecodeTiff has seen to it that it is there.
const eTiffFunctions& Library() {
    return *LoadTiff();
}

using eTiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

// `mostBytes`: what the library may take in one piece, whatever the file claims.
eTiff Open(eSource& source, std::size_t mostBytes, const char* mode) {
    const eTiffFunctions& library = Library();
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(library.newOptions(),
                                                                                   library.freeOptions);
    library.setMostMemory(options.get(), static_cast<tmsize_t>(mostBytes));
    library.setErrorHandler(options.get(), Ignore, nullptr);
    library.setWarningHandler(options.get(), Ignore, nullptr);
    return {library.open("", mode, &source, Read, Write, Seek, Close, Size, Map, Unmap, options.get()),
            library.close};
}

// Reads, so that a file that ends early is known; but a tile that is read into a buffer of a rounded length
// passes for one of a wrong length.
eTiff Open(eSource& source, std::size_t mostBytes) {
    eTiff tiff = Open(source, mostBytes, "rm");
    if (tiff != nullptr && Library().isTiled(tiff.get()) != 0) {
        source.position = 0;
        tiff = Open(source, mostBytes, "r");
    }
    return tiff;
}

struct eLayout {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint16_t bits = 1;     // of a sample
    std::uint16_t samples = 1;  // of a texel
    std::uint16_t colors = 0;   // samples of them that are grey, or red, green and blue; 0 for other kinds
    bool isApart = false;       // each sample has a plane of its own
    bool hasAlpha = false;      // the sample behind the colours
    bool isPremultiplied = false;

    std::size_t Texels() const { return std::size_t{width} * height; }
    std::size_t BytesPerTexel() const { return std::max<std::size_t>(1, std::size_t{bits} * samples / 8); }
};

std::uint16_t Number(TIFF& tiff, std::uint32_t tag) {
    std::uint16_t value = 0;
    Library().getFieldDefaulted(&tiff, tag, &value);
    return value;
}

// Samples that stand in the file as they are wanted. Others go through the library's conversion to 8 bits.
std::uint16_t PlainColors(TIFF& tiff) {
    const std::uint16_t bits = Number(tiff, TIFFTAG_BITSPERSAMPLE);
    const bool isPlain = (bits == 8 || bits == 16) && Library().isTiled(&tiff) == 0 &&
                         Number(tiff, TIFFTAG_SAMPLEFORMAT) == SAMPLEFORMAT_UINT &&
                         Number(tiff, TIFFTAG_ORIENTATION) == ORIENTATION_TOPLEFT;
    switch (isPlain ? Number(tiff, TIFFTAG_PHOTOMETRIC) : PHOTOMETRIC_YCBCR) {
        case PHOTOMETRIC_MINISBLACK:
            return 1;
        case PHOTOMETRIC_RGB:
            return 3;
        default:
            return 0;
    }
}

eLayout ReadLayout(TIFF& tiff) {
    eLayout layout;
    Library().getField(&tiff, TIFFTAG_IMAGEWIDTH, &layout.width);
    Library().getField(&tiff, TIFFTAG_IMAGELENGTH, &layout.height);
    layout.bits = Number(tiff, TIFFTAG_BITSPERSAMPLE);
    layout.samples = Number(tiff, TIFFTAG_SAMPLESPERPIXEL);
    layout.isApart = Number(tiff, TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
    std::uint16_t extraCount = 0;
    const std::uint16_t* extra = nullptr;
    Library().getFieldDefaulted(&tiff, TIFFTAG_EXTRASAMPLES, &extraCount, &extra);
    layout.hasAlpha = extraCount > 0;
    layout.isPremultiplied = extraCount > 0 && extra[0] == EXTRASAMPLE_ASSOCALPHA;
    constexpr int kMostSamples = 8;  // an artist's channels beside the colours
    const std::uint16_t colors = PlainColors(tiff);
    const int used = colors + (layout.hasAlpha ? 1 : 0);
    layout.colors = used <= layout.samples && layout.samples <= kMostSamples ? colors : 0;
    return layout;
}

// One row of samples to the texels.
template <class Value>
void StoreRow(const eLayout& layout, const Value* line, int first, Value* texel) {
    const int used = layout.colors + (layout.hasAlpha ? 1 : 0);
    for (std::uint32_t x = 0; x < layout.width; ++x, texel += 4) {
        if (layout.isApart) {
            texel[first < layout.colors ? first : 3] = line[x];
            continue;
        }
        const Value* const samples = line + std::size_t{x} * layout.samples;
        for (int sample = 0; sample < used; ++sample) {
            texel[sample < layout.colors ? sample : 3] = samples[sample];
        }
    }
}

template <class Value>
bool ReadSamples(TIFF& tiff, const eLayout& layout, Value* texels) {
    std::vector<Value> line(static_cast<std::size_t>(Library().scanlineSize(&tiff)) / sizeof(Value) + 1);
    const int planes = layout.isApart ? layout.colors + (layout.hasAlpha ? 1 : 0) : 1;
    for (int plane = 0; plane < planes; ++plane) {
        for (std::uint32_t row = 0; row < layout.height; ++row) {
            if (Library().readScanline(&tiff, line.data(), row, static_cast<std::uint16_t>(plane)) != 1) {
                return false;
            }
            StoreRow(layout, line.data(), plane, texels + std::size_t{row} * layout.width * 4);
        }
    }
    return true;
}

// Grey to all three colours, and full alpha where there is none.
template <class Value>
void FillChannels(const eLayout& layout, Value* texels) {
    for (Value* texel = texels; texel != texels + 4 * layout.Texels(); texel += 4) {
        if (layout.colors == 1) {
            texel[1] = texel[2] = texel[0];
        }
        if (!layout.hasAlpha) {
            texel[3] = static_cast<Value>(~Value{0});
        }
    }
}

// Colours that hold their product with alpha get back what was multiplied.
template <class Value>
void MakeStraight(Value* texels, std::size_t count) {
    constexpr std::uint32_t kFull = static_cast<Value>(~Value{0});
    for (Value* texel = texels; texel != texels + 4 * count; texel += 4) {
        const std::uint32_t alpha = texel[3];
        for (int channel = 0; channel < 3 && alpha != 0; ++channel) {
            texel[channel] =
                static_cast<Value>(std::min(kFull, (texel[channel] * kFull + alpha / 2) / alpha));
        }
    }
}

template <class Value>
bool ReadPlain(TIFF& tiff, const eLayout& layout, Value* texels) {
    if (!ReadSamples(tiff, layout, texels)) {
        return false;
    }
    FillChannels(layout, texels);
    if (layout.isPremultiplied) {
        MakeStraight(texels, layout.Texels());
    }
    return true;
}

// Palettes, CMYK, tiles, few bits and the rest, by the library's own conversion; it multiplies by alpha.
bool ReadConverted(TIFF& tiff, const eLayout& layout, std::uint8_t* texels) {
    std::vector<std::uint32_t> raster(layout.Texels());
    constexpr int kStopOnError = 1;
    if (Library().readConverted(&tiff, layout.width, layout.height, raster.data(), ORIENTATION_TOPLEFT,
                                kStopOnError) != 1) {
        return false;
    }
    std::uint8_t* texel = texels;
    for (const std::uint32_t packed : raster) {
        *texel++ = static_cast<std::uint8_t>(TIFFGetR(packed));
        *texel++ = static_cast<std::uint8_t>(TIFFGetG(packed));
        *texel++ = static_cast<std::uint8_t>(TIFFGetB(packed));
        *texel++ = static_cast<std::uint8_t>(TIFFGetA(packed));
    }
    if (layout.hasAlpha) {
        MakeStraight(texels, layout.Texels());
    }
    return true;
}

bool ReadTexels(TIFF& tiff, const eLayout& layout, void* texels) {
    if (layout.colors == 0) {
        return ReadConverted(tiff, layout, static_cast<std::uint8_t*>(texels));
    }
    return layout.bits == 16 ? ReadPlain(tiff, layout, static_cast<std::uint16_t*>(texels))
                             : ReadPlain(tiff, layout, static_cast<std::uint8_t*>(texels));
}

eBilingual Problem(const eSource& source) {
    return source.ranOut ? CutOffPicture() : UnreadablePicture();
}

}  // namespace

eDecodedImage DecodeTiff(std::span<const std::uint8_t> file) {
    if (LoadTiff() == nullptr) {
        return {nullptr, PictureWithoutReader()};
    }
    constexpr std::size_t kTables = std::size_t{1} << 20;
    // Deflate brings 1032 bytes into one, and of those the library may make eight for bits.
    constexpr std::size_t kMostBytesPerByte = 8 * 1032;
    eSource source{file};
    const eTiff tiff = Open(source, kTables + kMostBytesPerByte * file.size());
    if (tiff == nullptr) {
        return {nullptr, Problem(source)};
    }
    const eLayout layout = ReadLayout(*tiff);
    eBilingual problem =
        SizeProblem(layout.width, layout.height, kMostBytesPerByte * file.size() / layout.BytesPerTexel());
    if (!problem.IsEmpty()) {
        return {nullptr, std::move(problem)};
    }
    const bool has16Bits = layout.colors != 0 && layout.bits == 16;
    eImage::eTexels texels(std::calloc(layout.Texels(), has16Bits ? 8 : 4), std::free);
    if (texels == nullptr || !ReadTexels(*tiff, layout, texels.get()) || source.ranOut) {
        return {nullptr, Problem(source)};
    }
    return {std::make_unique<eImage>(static_cast<int>(layout.width), static_cast<int>(layout.height),
                                     layout.hasAlpha, has16Bits, std::move(texels)),
            {}};
}

}  // namespace standalone
