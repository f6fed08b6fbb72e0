#pragma once

#include <cstdint>
#include <ranges>

namespace support {

// What stands for a long result that must not change: FNV-1a over the values, in their order.
template <std::ranges::input_range Values>
std::uint64_t Checksum(const Values& values, std::uint64_t sum = 0xCBF29CE484222325U) {
    for (const auto value : values) {
        sum = (sum ^ static_cast<std::uint64_t>(value)) * 0x100000001B3U;
    }
    return sum;
}

}  // namespace support
