#pragma once

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

// Places 0 to `count` - 1, free at first and taken one by one. Finds the nearest free place from any place
// on, upwards or downwards. Each search shortens the way of those after it, so that they cost log n on
// average however the taken places lie. 8 bytes a place.
class eNextFree {
public:
    explicit eNextFree(std::size_t count) : up(count + 1), down(count + 1) {
        std::iota(up.begin(), up.end(), 0u);
        std::iota(down.begin(), down.end(), 0u);
    }

    void Take(std::uint32_t place) {
        up[place] = place + 1;
        down[place + 1] = place;
    }

    // The first free place at or above `place`, or the count of places when there is none.
    std::uint32_t AtOrAbove(std::size_t place) { return Follow(up, place); }

    // One past the last free place below `place`, or 0 when there is none.
    std::uint32_t EndBelow(std::size_t place) { return Follow(down, place); }

private:
    static std::uint32_t Follow(std::vector<std::uint32_t>& links, std::size_t start) {
        auto place = static_cast<std::uint32_t>(start);
        while (links[place] != place) {
            links[place] = links[links[place]];
            place = links[place];
        }
        return place;
    }

    std::vector<std::uint32_t> up;    // a taken place names one above it, a free one itself
    std::vector<std::uint32_t> down;  // the same downwards, each place counted one higher
};
