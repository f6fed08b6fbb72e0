#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "standalone/loaders/gltf/file/gltf_container.h"
#include "standalone/loaders/json/json_tree.h"

namespace standalone {

// The bytes of a file's buffers, by number. Those in the binary part are looked at where they stand in the
// file; others are kept here.
class eGltfBuffers {
public:
    eGltfBuffers() = default;
    eGltfBuffers(const eGltfBuffers&) = delete;
    eGltfBuffers& operator=(const eGltfBuffers&) = delete;
    eGltfBuffers(eGltfBuffers&&) = default;
    eGltfBuffers& operator=(eGltfBuffers&&) = default;
    ~eGltfBuffers() = default;

    std::span<const std::uint8_t> Bytes(int buffer) const { return bytes[static_cast<std::size_t>(buffer)]; }
    // Of all buffers together.
    std::size_t Size() const;

    // Bytes that outlast the object.
    void Add(std::span<const std::uint8_t> shown) { bytes.push_back(shown); }
    // The number of the new buffer.
    int Add(std::vector<std::uint8_t> own);

private:
    std::vector<std::span<const std::uint8_t>> bytes;
    std::vector<std::vector<std::uint8_t>> kept;
};

// The content of each buffer of a checked file, cut to the length that the file tells: of the file that it
// names, of its data URI, or of the binary part. A buffer that only stands for compressed data is empty. One
// that can't be read, or is shorter than told, is a problem.
eGltfBuffers ReadGltfBuffers(const eJsonTree& json, const eGltfContainer& container,
                             const std::string& folder, eImportReport& report);

}  // namespace standalone
