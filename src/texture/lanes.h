// Vectors whose lanes move together, one block of an image per lane. They are the compilers' own vector
// types: SSE2 on every x86-64, the counterpart on other machines, plain code where there is none, and the
// same values on all of them.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "widening and narrowing move bytes within lanes");

using eByteLanes [[gnu::vector_size(16)]] = std::uint8_t;
using eWordLanes [[gnu::vector_size(16)]] = std::int16_t;
using eIntLanes [[gnu::vector_size(16)]] = std::int32_t;
using eFloatLanes [[gnu::vector_size(16)]] = float;

// Sixteen lanes of 16 bits: lanes 0 to 7 and lanes 8 to 15.
struct eWordPair {
    eWordLanes low;
    eWordLanes high;
};

inline eByteLanes SplatByte(std::uint8_t value) {
    return value - eByteLanes{};
}

inline eFloatLanes SplatFloat(float value) {
    return value - eFloatLanes{};
}

// sum + a * b in words that run over from the highest to the lowest.
inline eWordLanes MultiplyAdd(eWordLanes sum, eWordLanes a, eWordLanes b) {
    using eUnsignedLanes [[gnu::vector_size(16)]] = std::uint16_t;
    return reinterpret_cast<eWordLanes>(reinterpret_cast<eUnsignedLanes>(sum) +
                                        reinterpret_cast<eUnsignedLanes>(a) *
                                            reinterpret_cast<eUnsignedLanes>(b));
}

// Comparisons of lanes give masks: all bits of a lane set or none.

template <class Lanes>
inline Lanes Min(Lanes a, Lanes b) {
    return a < b ? a : b;
}

template <class Lanes>
inline Lanes Max(Lanes a, Lanes b) {
    return a > b ? a : b;
}

template <class Lanes, class Mask>
inline Lanes Select(Mask mask, Lanes yes, Lanes no) {
    return mask ? yes : no;
}

template <class Lanes>
inline bool AnyLane(Lanes mask) {
    static_assert(sizeof(Lanes) == 16);
    std::array<std::uint64_t, 2> halves;
    std::memcpy(halves.data(), &mask, sizeof(mask));
    return (halves[0] | halves[1]) != 0;
}

// Unsigned bytes to words of the same value.
inline eWordPair Widen(eByteLanes bytes) {
    const eByteLanes zero{};
    return {reinterpret_cast<eWordLanes>(
                __builtin_shufflevector(bytes, zero, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23)),
            reinterpret_cast<eWordLanes>(__builtin_shufflevector(bytes, zero, 8, 24, 9, 25, 10, 26, 11, 27,
                                                                 12, 28, 13, 29, 14, 30, 15, 31))};
}

// The lower byte of each word: a value of 0 to 255, or a mask.
inline eByteLanes Narrow(eWordPair words) {
    return __builtin_shufflevector(reinterpret_cast<eByteLanes>(words.low),
                                   reinterpret_cast<eByteLanes>(words.high), 0, 2, 4, 6, 8, 10, 12, 14, 16,
                                   18, 20, 22, 24, 26, 28, 30);
}

// Half 0 takes lanes 0 to 3, half 1 lanes 4 to 7.
template <int half>
inline eFloatLanes ToFloats(eWordLanes words) {
    eWordLanes twice;
    if constexpr (half == 0) {
        twice = __builtin_shufflevector(words, words, 0, 0, 1, 1, 2, 2, 3, 3);
    } else {
        twice = __builtin_shufflevector(words, words, 4, 4, 5, 5, 6, 6, 7, 7);
    }
    return __builtin_convertvector(reinterpret_cast<eIntLanes>(twice) >> 16, eFloatLanes);
}

// Towards zero.
inline eIntLanes ToInts(eFloatLanes floats) {
    return __builtin_convertvector(floats, eIntLanes);
}

inline eFloatLanes ToFloats(eIntLanes ints) {
    return __builtin_convertvector(ints, eFloatLanes);
}

// The lower word of each of eight ints.
inline eWordLanes NarrowInts(eIntLanes low, eIntLanes high) {
    return __builtin_shufflevector(reinterpret_cast<eWordLanes>(low), reinterpret_cast<eWordLanes>(high), 0,
                                   2, 4, 6, 8, 10, 12, 14);
}
