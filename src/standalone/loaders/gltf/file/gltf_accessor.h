#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "standalone/loaders/gltf/file/gltf_buffers.h"
#include "standalone/loaders/gltf/file/gltf_model.h"

namespace standalone {

// The elements of an accessor, each of some floats: looked at where they stand if the file has them as
// floats, unfolded if not.
class eGltfNumbers {
public:
    // `width` floats per element.
    eGltfNumbers(std::vector<float> numbers, std::size_t width)
        : unfolded(std::move(numbers)),
          first(reinterpret_cast<const std::uint8_t*>(unfolded.data())),
          count(unfolded.size() / width),
          stride(width * sizeof(float)) {}
    // Bytes that outlast the object; the stride is in bytes.
    eGltfNumbers(const std::uint8_t* firstElement, std::size_t elementCount, std::size_t elementStride)
        : first(firstElement), count(elementCount), stride(elementStride) {}
    eGltfNumbers(const eGltfNumbers&) = delete;
    eGltfNumbers& operator=(const eGltfNumbers&) = delete;

    std::size_t Count() const { return count; }
    bool IsEmpty() const { return count == 0; }
    template <std::size_t Width>
    std::array<float, Width> At(std::size_t element) const {
        std::array<float, Width> numbers;
        std::memcpy(numbers.data(), first + element * stride, sizeof numbers);
        return numbers;
    }

private:
    std::vector<float> unfolded;
    const std::uint8_t* first;
    std::size_t count;
    std::size_t stride;
};

// Reads the numbers behind accessors, whatever their component type, stride and sparse storage. Numbers that
// the file marks as normalised come as fractions. What an accessor can't give is a problem at the place of
// its user, and the result is empty; a good accessor is never empty.
class eGltfAccessors {
public:
    // All must outlive the object. Holds every accessor against its buffer views and reports what lies
    // beyond them: the other operations may be called only if that went well.
    eGltfAccessors(const tinygltf::Model& model, const eGltfBuffers& buffers, eImportReport& report);

    // The bytes of a buffer view.
    std::span<const std::uint8_t> View(int bufferView) const;

    std::size_t Count(int accessor) const {
        return model.accessors[static_cast<std::size_t>(accessor)].count;
    }
    // Numbers per element: 3 for VEC3, 16 for MAT4.
    std::size_t Width(int accessor) const;
    bool IsFloat(int accessor) const;

    // `width` numbers per element, all finite.
    eGltfNumbers Numbers(int accessor, std::size_t width, const std::string& place) const;
    // The same in a list.
    std::vector<float> Floats(int accessor, std::size_t width, const std::string& place) const;
    // `width` whole numbers from 0 up per element.
    std::vector<std::uint32_t> Wholes(int accessor, std::size_t width, const std::string& place) const;

private:
    bool Expect(int accessor, std::size_t width, const std::string& place) const;
    template <class Number>
    std::vector<Number> Read(const tinygltf::Accessor& accessor) const;
    template <class Number>
    void ReadSparse(const tinygltf::Accessor& accessor, std::vector<Number>& numbers) const;

    const tinygltf::Model& model;
    const eGltfBuffers& buffers;
    eImportReport& report;
};

}  // namespace standalone
