#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/description.h"

namespace gltf {

using eJson = inspect::eDescription;

// What an accessor is used for: vertices and indices have a target of their own.
enum class eBufferUse { Data = 0, Vertices = 34962, Indices = 34963 };

// A .glb file as it grows: its JSON, and the one buffer behind it. Lists of the JSON come into being with
// their first entry, as the format allows no empty ones. Every Add answers with the entry's number.
class eGlb {
public:
    eGlb();

    int Add(const char* list, eJson entry);
    eJson& At(const char* list, int number) { return json_[list][static_cast<std::size_t>(number)]; }
    int Count(const char* list) const;
    eJson& Root() { return json_; }
    // Names an extension in use, once.
    void Use(const char* extension);

    // A buffer view.
    int AddBytes(std::span<const std::uint8_t> bytes, eBufferUse use);
    // An accessor of vectors of so many floats (16: matrices); with the bounds that positions and times need.
    int AddFloats(std::span<const float> values, int components, eBufferUse use, bool hasBounds = false);
    int AddIndices(std::span<const std::uint16_t> indices);
    // Four numbers of 8 bits each, such as bone numbers.
    int AddBytes4(std::span<const std::uint8_t> values);
    // Four numbers of 16 bits that stand for 0 to 1.
    int AddShares4(std::span<const std::uint16_t> values);

    // The whole file.
    std::string File();

private:
    int AddAccessor(std::span<const std::uint8_t> bytes, int componentType, const char* type,
                    std::size_t count, eBufferUse use);

    eJson json_;
    std::vector<std::uint8_t> buffer_;
};

}  // namespace gltf
