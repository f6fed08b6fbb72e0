#include <cstdlib>

// What the image library may take in one piece. It believes the lengths that a file claims.
static std::size_t mostBytes = 0;

// Cleared, so that a broken file does not show what lay in memory.
static void* Allocate(std::size_t size) {
    return size <= mostBytes ? std::calloc(1, size) : nullptr;
}

static void* Reallocate(void* old, std::size_t size) {
    return size <= mostBytes ? std::realloc(old, size) : nullptr;
}

// The image library is compiled here and used nowhere else.
#define STBI_MALLOC(size) Allocate(size)
#define STBI_REALLOC(old, size) Reallocate(old, size)
#define STBI_FREE(old) std::free(old)
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_TGA
#define STBI_ONLY_BMP
#define STBI_ONLY_PSD
#define STBI_ONLY_GIF
#define STBI_NO_STDIO
#include <stb/stb_image.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "standalone/pictures/image_readers.h"
#include "standalone/pictures/jpeg_tables.h"
#include "standalone/pictures/picture_problem.h"

namespace standalone {

namespace {

// A file in memory as the library reads it; notes when it asks for bytes behind the end, which it takes for
// zeros.
struct eSource {
    std::span<const std::uint8_t> file;
    std::size_t position = 0;
    bool ranOut = false;
};

int Read(void* user, char* data, int size) {
    // The library fills its buffer in pieces of this size, which may well be more than is left.
    constexpr int kBufferSize = 128;
    eSource& source = *static_cast<eSource*>(user);
    const std::size_t got = std::min(source.file.size() - source.position, static_cast<std::size_t>(size));
    std::memcpy(data, source.file.data() + source.position, got);
    source.position += got;
    const bool isShort = got < static_cast<std::size_t>(size);
    source.ranOut |= isShort && (got == 0 || size != kBufferSize);
    return static_cast<int>(got);
}

void Skip(void* user, int count) {
    eSource& source = *static_cast<eSource*>(user);
    const auto target = static_cast<std::ptrdiff_t>(source.position) + count;
    const auto end = static_cast<std::ptrdiff_t>(source.file.size());
    source.ranOut |= target > end;
    source.position = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(target, 0, end));
}

int IsAtEnd(void* user) {
    const eSource& source = *static_cast<eSource*>(user);
    return source.position >= source.file.size() ? 1 : 0;
}

constexpr stbi_io_callbacks kCallbacks{Read, Skip, IsAtEnd};

// The formats, by their first bytes, with the most texels that one byte of the file can stand for.
struct eFormat {
    std::string_view begin;
    int texelsPerByte;
    bool alphaMayBeIdle;  // the format has an alpha channel whether it is used or not
};

constexpr std::string_view kJpegBegin = "\xFF\xD8";

constexpr eFormat kFormats[] = {
    {"\x89PNG", 8 * 1032, false},  // deflate brings 1032 bytes into one; 1 bit a texel
    {kJpegBegin, 512, false},      // a block of 64 texels has one bit at least
    {"GIF8", 4096, true},          // a code of 12 bits stands for 4096 texels at most
    {"BM", 8, true},               // 1 bit a texel
    {"8BPS", 64, false},           // runs of 128 in two bytes
    {"", 64, false},               // tga: runs of 128 in two bytes
};

const eFormat& FormatOf(std::span<const std::uint8_t> file) {
    const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    return *std::ranges::find_if(kFormats,
                                 [&](const eFormat& format) { return text.starts_with(format.begin); });
}

// A jpg marker may have any number of fill bytes before it. The library comes back to the first one only as
// far as its small buffer goes, so those before the first marker are left out.
std::span<const std::uint8_t> WithoutFill(std::span<const std::uint8_t> file) {
    constexpr std::uint8_t kFill = 0xFF;
    std::size_t fill = 0;
    while (fill + 1 < file.size() && file[fill] == kFill && file[fill + 1] == kFill) {
        ++fill;
    }
    const std::span<const std::uint8_t> rest = file.subspan(fill);
    return FormatOf(rest).begin == kJpegBegin ? rest : file;
}

struct eHeader {
    int width = 0;
    int height = 0;
    int channels = 0;
    bool has16Bits = false;
};

// The library looks for the depth of a psd file in the wrong place.
bool IsDeepPsd(std::span<const std::uint8_t> file) {
    constexpr std::size_t kDepth = 22;
    return file.size() > kDepth + 1 && std::memcmp(file.data(), "8BPS", 4) == 0 && file[kDepth] == 0 &&
           file[kDepth + 1] == 16;
}

// The library's own tables; the file's content, which it gathers in a buffer that doubles; and for each texel
// four channels of 16 bits, twice while it converts them.
void LimitAllocation(std::span<const std::uint8_t> file, std::uint64_t texels) {
    constexpr std::size_t kTables = std::size_t{1} << 20;
    mostBytes = kTables + 2 * file.size() + 16 * static_cast<std::size_t>(texels);
}

bool ReadHeader(std::span<const std::uint8_t> file, eHeader& header) {
    LimitAllocation(file, 0);
    eSource source{file};
    if (stbi_info_from_callbacks(&kCallbacks, &source, &header.width, &header.height, &header.channels) ==
        0) {
        return false;
    }
    // A bmp whose rows run from the top says so by the sign.
    header.height = std::abs(std::max(header.height, -std::numeric_limits<int>::max()));
    source = {file};
    header.has16Bits = IsDeepPsd(file) || stbi_is_16_bit_from_callbacks(&kCallbacks, &source) != 0;
    return true;
}

// Why the header can't be true, or empty.
eBilingual HeaderProblem(std::span<const std::uint8_t> file, const eHeader& header) {
    return SizeProblem(static_cast<std::uint64_t>(header.width), static_cast<std::uint64_t>(header.height),
                       static_cast<std::uint64_t>(FormatOf(file).texelsPerByte) * file.size());
}

}  // namespace

eDecodedImage DecodePlainImage(std::span<const std::uint8_t> wholeFile) {
    const std::span<const std::uint8_t> file = WithoutFill(wholeFile);
    eHeader header;
    if (FormatOf(file).begin == kJpegBegin && !HuffmanTablesFit(file)) {
        return {nullptr, UnreadablePicture()};
    }
    if (!ReadHeader(file, header)) {
        const bool isKnown = !FormatOf(file).begin.empty();
        return {nullptr, isKnown ? UnreadablePicture() : UnknownPicture()};
    }
    if (const eBilingual problem = HeaderProblem(file, header); !problem.IsEmpty()) {
        return {nullptr, problem};
    }
    LimitAllocation(file,
                    static_cast<std::uint64_t>(header.width) * static_cast<std::uint64_t>(header.height));
    eSource source{file};
    constexpr int kChannels = 4;
    int width = 0, height = 0, channels = 0;
    void* const values = header.has16Bits ? static_cast<void*>(stbi_load_16_from_callbacks(
                                                &kCallbacks, &source, &width, &height, &channels, kChannels))
                                          : stbi_load_from_callbacks(&kCallbacks, &source, &width, &height,
                                                                     &channels, kChannels);
    eImage::eTexels texels(values, stbi_image_free);
    if (source.ranOut) {
        return {nullptr, CutOffPicture()};
    }
    if (values == nullptr) {
        return {nullptr, UnreadablePicture()};
    }
    bool hasAlpha = channels == 2 || channels == 4;
    if (hasAlpha && FormatOf(file).alphaMayBeIdle) {
        const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        hasAlpha = !AllOpaque(static_cast<const std::uint8_t*>(values), count);
    }
    return {std::make_unique<eImage>(width, height, hasAlpha, header.has16Bits, std::move(texels)), {}};
}

}  // namespace standalone
