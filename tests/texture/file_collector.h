// Takes what CompressImage writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "texture/compress_image.h"

struct eWriteCall {
    std::size_t byteCount;
    std::optional<eMipInfo> mipInfo;
    std::intptr_t userValue;
};

struct eFileCollector {
    std::vector<std::uint8_t> bytes;
    std::vector<eWriteCall> calls;
    // The number of the call that gets badAnswer, if there are so many.
    std::size_t badCall = SIZE_MAX;
    int badAnswer = 0;

    eWriteBlock Callback() {
        return [this](const void* buffer, std::size_t byteCount, const eMipInfo* mipInfo,
                      std::intptr_t userValue) {
            const auto* source = static_cast<const std::uint8_t*>(buffer);
            bytes.insert(bytes.end(), source, source + byteCount);
            calls.push_back({byteCount, mipInfo ? std::optional(*mipInfo) : std::nullopt, userValue});
            return calls.size() == badCall + 1 ? badAnswer : 0;
        };
    }
};
