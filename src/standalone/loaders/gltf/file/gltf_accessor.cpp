#include "standalone/loaders/gltf/file/gltf_accessor.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "standalone/loaders/gltf/file/gltf_place.h"

namespace standalone {
namespace {

std::size_t ComponentSize(int componentType) {
    return static_cast<std::size_t>(
        tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(componentType)));
}

std::size_t WidthOf(const tinygltf::Accessor& accessor) {
    return static_cast<std::size_t>(
        tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(accessor.type)));
}

std::size_t ElementSize(const tinygltf::Accessor& accessor) {
    return WidthOf(accessor) * ComponentSize(accessor.componentType);
}

// True if `count` elements at that stride from the offset on lie within the view.
bool Fits(const tinygltf::BufferView& view, std::size_t offset, std::size_t count, std::size_t stride,
          std::size_t elementSize) {
    if (offset > view.byteLength || elementSize > view.byteLength - offset) {
        return false;
    }
    return count - 1 <= (view.byteLength - offset - elementSize) / stride;
}

// Holds accessors against the views that they read from.
class eAccessorCheck {
public:
    eAccessorCheck(const tinygltf::Model& checkedModel, const eGltfBuffers& itsBuffers,
                   eImportReport& ownReport)
        : model(checkedModel), buffers(itsBuffers), report(ownReport), allBytes(buffers.Size()) {}

    void Check(const tinygltf::Accessor& accessor, const std::string& place) {
        if (accessor.bufferView < 0) {
            // Zeros that no byte of the file stands for must not outgrow the file.
            if (accessor.count > allBytes) {
                report.Problem(place, eMessageId::GltfAccessorSize);
            }
        } else {
            CheckView(accessor, place);
        }
        if (accessor.sparse.isSparse) {
            CheckSparse(accessor, place + "/sparse");
        }
    }

private:
    const tinygltf::BufferView& View(int index) const {
        return model.bufferViews[static_cast<std::size_t>(index)];
    }

    void CheckView(const tinygltf::Accessor& accessor, const std::string& place) {
        const tinygltf::BufferView& view = View(accessor.bufferView);
        const std::size_t size = ElementSize(accessor);
        const std::size_t stride = view.byteStride == 0 ? size : view.byteStride;
        if (stride < size) {
            report.Problem(place, eMessageId::GltfAccessorStride);
        } else if (!Fits(view, accessor.byteOffset, accessor.count, stride, size)) {
            report.Problem(place, eMessageId::GltfAccessorRange, accessor.count, accessor.byteOffset,
                           view.byteLength);
        }
    }

    void CheckSparse(const tinygltf::Accessor& accessor, const std::string& place) {
        const auto& sparse = accessor.sparse;
        const auto count = static_cast<std::size_t>(sparse.count);
        const std::size_t indexSize = ComponentSize(sparse.indices.componentType);
        const std::size_t valueSize = ElementSize(accessor);
        if (count > accessor.count) {
            report.Problem(place, eMessageId::GltfSparseCount);
        } else if (!Fits(View(sparse.indices.bufferView), static_cast<std::size_t>(sparse.indices.byteOffset),
                         count, indexSize, indexSize)) {
            report.Problem(place + "/indices", eMessageId::GltfSparseIndices);
        } else if (!Fits(View(sparse.values.bufferView), static_cast<std::size_t>(sparse.values.byteOffset),
                         count, valueSize, valueSize)) {
            report.Problem(place + "/values", eMessageId::GltfSparseValues);
        } else {
            CheckSparseIndices(accessor, place + "/indices");
        }
    }

    void CheckSparseIndices(const tinygltf::Accessor& accessor, const std::string& place);

    const tinygltf::Model& model;
    const eGltfBuffers& buffers;
    eImportReport& report;
    std::size_t allBytes;
};

// --- The numbers in a buffer, little-endian.

template <class Component>
Component Load(const unsigned char* bytes) {
    Component value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

template <class Number, class Component>
Number Convert(Component component, bool isNormalised) {
    if constexpr (std::is_same_v<Number, float> && std::is_integral_v<Component>) {
        if (isNormalised) {
            const double fraction =
                static_cast<double>(component) / static_cast<double>(std::numeric_limits<Component>::max());
            return static_cast<float>(std::max(fraction, -1.0));
        }
    }
    return static_cast<Number>(component);
}

struct eElements {
    const unsigned char* first = nullptr;
    std::size_t count = 0;
    std::size_t stride = 0;
    std::size_t width = 0;
    bool isNormalised = false;

    // Elements without gaps as one wide one, whose numbers can be taken several at a time.
    eElements InOneRow(std::size_t componentSize) const {
        const bool isDense = stride == width * componentSize;
        return isDense ? eElements{first, 1, stride * count, width * count, isNormalised} : *this;
    }
};

template <class Number, class Component>
void LoadAll(const eElements& all, Number* out) {
    const eElements elements = all.InOneRow(sizeof(Component));
    const unsigned char* element = elements.first;
    for (std::size_t i = 0; i < elements.count; ++i, element += elements.stride) {
        for (std::size_t component = 0; component < elements.width; ++component) {
            *out++ = Convert<Number>(Load<Component>(element + component * sizeof(Component)),
                                     elements.isNormalised);
        }
    }
}

bool AreFinite(const eElements& all) {
    const eElements elements = all.InOneRow(sizeof(float));
    constexpr std::uint32_t kMagnitude = 0x7FFFFFFF, kInfinite = 0x7F800000;
    std::uint32_t greatest = 0;
    const unsigned char* element = elements.first;
    for (std::size_t i = 0; i < elements.count; ++i, element += elements.stride) {
        for (std::size_t component = 0; component < elements.width; ++component) {
            const auto bits = Load<std::uint32_t>(element + component * sizeof(float));
            greatest = std::max(greatest, bits & kMagnitude);
        }
    }
    return greatest < kInfinite;
}

template <class Number>
void LoadAll(int componentType, const eElements& elements, Number* out) {
    switch (componentType) {
        case TINYGLTF_COMPONENT_TYPE_BYTE:
            return LoadAll<Number, std::int8_t>(elements, out);
        case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
            return LoadAll<Number, std::uint8_t>(elements, out);
        case TINYGLTF_COMPONENT_TYPE_SHORT:
            return LoadAll<Number, std::int16_t>(elements, out);
        case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
            return LoadAll<Number, std::uint16_t>(elements, out);
        case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT:
            return LoadAll<Number, std::uint32_t>(elements, out);
        default:
            if constexpr (std::is_same_v<Number, float>) {
                LoadAll<Number, float>(elements, out);
            }
    }
}

std::span<const std::uint8_t> BytesOf(const tinygltf::Model& model, const eGltfBuffers& buffers,
                                      int bufferView) {
    const tinygltf::BufferView& view = model.bufferViews[static_cast<std::size_t>(bufferView)];
    return buffers.Bytes(view.buffer).subspan(view.byteOffset, view.byteLength);
}

// Those that the accessor has in its view.
eElements ElementsOf(const tinygltf::Model& model, const eGltfBuffers& buffers,
                     const tinygltf::Accessor& accessor) {
    const std::size_t stride = model.bufferViews[static_cast<std::size_t>(accessor.bufferView)].byteStride;
    return {BytesOf(model, buffers, accessor.bufferView).data() + accessor.byteOffset, accessor.count,
            stride == 0 ? ElementSize(accessor) : stride, WidthOf(accessor), accessor.normalized};
}

bool StandsAsFloats(const tinygltf::Accessor& accessor) {
    return accessor.componentType == TINYGLTF_COMPONENT_TYPE_FLOAT && accessor.bufferView >= 0 &&
           !accessor.sparse.isSparse;
}

std::vector<std::uint32_t> SparseIndices(std::span<const std::uint8_t> view,
                                         const tinygltf::Accessor& accessor) {
    const auto& indices = accessor.sparse.indices;
    std::vector<std::uint32_t> numbers(static_cast<std::size_t>(accessor.sparse.count));
    LoadAll(
        indices.componentType,
        {view.data() + indices.byteOffset, numbers.size(), ComponentSize(indices.componentType), 1, false},
        numbers.data());
    return numbers;
}

void eAccessorCheck::CheckSparseIndices(const tinygltf::Accessor& accessor, const std::string& place) {
    const std::vector<std::uint32_t> indices =
        SparseIndices(BytesOf(model, buffers, accessor.sparse.indices.bufferView), accessor);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        if (indices[i] >= accessor.count || (i != 0 && indices[i] <= indices[i - 1])) {
            report.Problem(place, eMessageId::GltfSparseOrder, indices[i], i);
            return;
        }
    }
}

}  // namespace

eGltfAccessors::eGltfAccessors(const tinygltf::Model& readModel, const eGltfBuffers& readBuffers,
                               eImportReport& ownReport)
    : model(readModel), buffers(readBuffers), report(ownReport) {
    eAccessorCheck check(model, buffers, report);
    for (std::size_t i = 0; i < model.accessors.size(); ++i) {
        check.Check(model.accessors[i], GltfPlace("accessors", i));
    }
}

std::span<const std::uint8_t> eGltfAccessors::View(int bufferView) const {
    return BytesOf(model, buffers, bufferView);
}

std::size_t eGltfAccessors::Width(int accessor) const {
    return WidthOf(model.accessors[static_cast<std::size_t>(accessor)]);
}

bool eGltfAccessors::IsFloat(int accessor) const {
    return model.accessors[static_cast<std::size_t>(accessor)].componentType == TINYGLTF_COMPONENT_TYPE_FLOAT;
}

bool eGltfAccessors::Expect(int accessor, std::size_t width, const std::string& place) const {
    if (Width(accessor) == width) {
        return true;
    }
    report.Problem(place, eMessageId::GltfElementWidth, accessor, Width(accessor), width);
    return false;
}

template <class Number>
std::vector<Number> eGltfAccessors::Read(const tinygltf::Accessor& accessor) const {
    std::vector<Number> numbers(accessor.count * WidthOf(accessor));
    if (accessor.bufferView >= 0) {
        LoadAll(accessor.componentType, ElementsOf(model, buffers, accessor), numbers.data());
    }
    if (accessor.sparse.isSparse) {
        ReadSparse(accessor, numbers);
    }
    return numbers;
}

template <class Number>
void eGltfAccessors::ReadSparse(const tinygltf::Accessor& accessor, std::vector<Number>& numbers) const {
    const auto& values = accessor.sparse.values;
    const std::size_t width = WidthOf(accessor);
    const std::vector<std::uint32_t> indices =
        SparseIndices(View(accessor.sparse.indices.bufferView), accessor);
    std::vector<Number> replaced(indices.size() * width);
    LoadAll(accessor.componentType,
            {View(values.bufferView).data() + values.byteOffset, indices.size(), ElementSize(accessor), width,
             accessor.normalized},
            replaced.data());
    for (std::size_t i = 0; i < indices.size(); ++i) {
        std::copy_n(replaced.begin() + static_cast<std::ptrdiff_t>(i * width), width,
                    numbers.begin() + static_cast<std::ptrdiff_t>(indices[i] * width));
    }
}

// Whatever is wrong is told where the numbers are unfolded.
eGltfNumbers eGltfAccessors::Numbers(int accessor, std::size_t width, const std::string& place) const {
    const tinygltf::Accessor& source = model.accessors[static_cast<std::size_t>(accessor)];
    if (WidthOf(source) == width && StandsAsFloats(source)) {
        const eElements elements = ElementsOf(model, buffers, source);
        if (AreFinite(elements)) {
            return {elements.first, elements.count, elements.stride};
        }
    }
    return {Floats(accessor, width, place), width};
}

std::vector<float> eGltfAccessors::Floats(int accessor, std::size_t width, const std::string& place) const {
    if (!Expect(accessor, width, place)) {
        return {};
    }
    std::vector<float> numbers = Read<float>(model.accessors[static_cast<std::size_t>(accessor)]);
    const auto bad = std::ranges::find_if_not(numbers, [](float number) { return std::isfinite(number); });
    if (bad != numbers.end()) {
        report.Problem(place, eMessageId::GltfNoNumber,
                       static_cast<std::size_t>(bad - numbers.begin()) / width, accessor);
        return {};
    }
    return numbers;
}

std::vector<std::uint32_t> eGltfAccessors::Wholes(int accessor, std::size_t width,
                                                  const std::string& place) const {
    const int type = model.accessors[static_cast<std::size_t>(accessor)].componentType;
    if (!Expect(accessor, width, place)) {
        return {};
    }
    if (type == TINYGLTF_COMPONENT_TYPE_FLOAT || type == TINYGLTF_COMPONENT_TYPE_BYTE ||
        type == TINYGLTF_COMPONENT_TYPE_SHORT) {
        report.Problem(place, eMessageId::GltfNoWholeNumbers, accessor);
        return {};
    }
    return Read<std::uint32_t>(model.accessors[static_cast<std::size_t>(accessor)]);
}

}  // namespace standalone
