// How the colour blocks hold a channel: red and blue in five bits, green in six.
#pragma once

#include <array>
#include <cstddef>

inline constexpr std::size_t colorChannels = 3;
inline constexpr std::size_t greenChannel = 1;
inline constexpr std::array<int, colorChannels> channelBits = {5, 6, 5};

template <class Value>
using ePerChannel = std::array<Value, colorChannels>;

// How much the squared error of each channel counts.
using eColorWeights = ePerChannel<float>;

constexpr int HighestBits(std::size_t channel) {
    return (1 << channelBits[channel]) - 1;
}

// The byte that a decoder makes of a channel's bits: their upper ones are repeated below.
template <class Number>
constexpr Number ExpandedBits(Number bits, std::size_t channel) {
    const int width = channelBits[channel];
    return (bits << (8 - width)) | (bits >> (2 * width - 8));
}
