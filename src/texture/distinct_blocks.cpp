#include "texture/distinct_blocks.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "texture/block_group.h"

namespace {

// The four rows of a block, two pixels a number.
using eBlockContent = std::array<std::uint64_t, 8>;

constexpr unsigned hashBits = 12;

std::size_t HashOf(const eBlockContent& content) {
    constexpr std::uint64_t factor = 0x9e3779b97f4a7c15;  // 2^64 over the golden ratio, which spreads well
    std::uint64_t hash = 0;
    for (const std::uint64_t pixels : content) {
        hash = (hash ^ pixels) * factor;
        hash ^= hash >> 32;
    }
    return static_cast<std::size_t>(hash & ((1U << hashBits) - 1));
}

class eBlockFinder {
public:
    explicit eBlockFinder(const ePixelImage& picture) : image(picture), across(BlocksAlong(picture.width)) {}

    void Add(std::size_t block) {
        const std::size_t next = distinct.blocks.size();
        const std::size_t place = IsWhole(block) ? PlaceOfLike(block, next) : next;
        if (place == next) {
            distinct.blocks.push_back(block);
        }
        distinct.placeOf.push_back(place);
    }

    eDistinctBlocks distinct;

private:
    std::size_t Left(std::size_t block) const { return 4 * (block % across); }
    std::size_t Top(std::size_t block) const { return 4 * (block / across); }
    bool IsWhole(std::size_t block) const {
        return Left(block) + 4 <= image.width && Top(block) + 4 <= image.height;
    }

    eBlockContent ContentOf(std::size_t block) const {
        eBlockContent content;
        for (std::size_t row = 0; row < 4; row++) {
            std::memcpy(content.data() + 2 * row, image.Pixel(Left(block), Top(block) + row), 16);
        }
        return content;
    }

    // Or `next`, which is remembered then, if none is known.
    std::size_t PlaceOfLike(std::size_t block, std::size_t next) {
        const eBlockContent content = ContentOf(block);
        std::size_t& place = placeByHash[HashOf(content)];
        if (place == none || ContentOf(distinct.blocks[place]) != content) {
            place = next;
        }
        return place;
    }

    static constexpr std::size_t none = ~std::size_t{0};

    const ePixelImage& image;
    std::size_t across;
    std::vector<std::size_t> placeByHash = std::vector<std::size_t>(std::size_t{1} << hashBits, none);
};

}  // namespace

eDistinctBlocks FindDistinctBlocks(const ePixelImage& image) {
    eBlockFinder finder(image);
    const std::size_t count = BlocksAlong(image.width) * BlocksAlong(image.height);
    finder.distinct.blocks.reserve(count);
    finder.distinct.placeOf.reserve(count);
    for (std::size_t block = 0; block < count; block++) {
        finder.Add(block);
    }
    return std::move(finder.distinct);
}
