#include "gltf/glb.h"

#include <algorithm>

namespace gltf {

namespace {

constexpr int kUnsignedByte = 5121;
constexpr int kUnsignedShort = 5123;
constexpr int kFloat = 5126;

const char* TypeOf(int components) {
    constexpr const char* kTypes[] = {"SCALAR", "VEC2", "VEC3", "VEC4"};
    return components == 16 ? "MAT4" : kTypes[components - 1];
}

template <class Value>
std::span<const std::uint8_t> BytesOf(std::span<const Value> values) {
    return {reinterpret_cast<const std::uint8_t*>(values.data()), values.size_bytes()};
}

void AppendNumber(std::string& file, std::size_t number) {
    for (int shift = 0; shift < 32; shift += 8) {
        file += static_cast<char>(number >> shift & 0xFFU);
    }
}

void AppendChunk(std::string& file, std::string_view tag, std::string content, char filling) {
    content.resize((content.size() + 3) / 4 * 4, filling);
    AppendNumber(file, content.size());
    file.append(tag);
    file += content;
}

}  // namespace

eGlb::eGlb() : json_{{"asset", {{"version", "2.0"}, {"generator", "zyrexport"}}}} {}

int eGlb::Add(const char* list, eJson entry) {
    json_[list].push_back(std::move(entry));
    return Count(list) - 1;
}

int eGlb::Count(const char* list) const {
    return json_.contains(list) ? static_cast<int>(json_[list].size()) : 0;
}

void eGlb::Use(const char* extension) {
    eJson& used = json_["extensionsUsed"];
    if (std::ranges::find(used, eJson(extension)) == used.end()) {
        used.push_back(extension);
    }
}

int eGlb::AddBytes(std::span<const std::uint8_t> bytes, eBufferUse use) {
    constexpr std::size_t kAlignment = 4;
    buffer_.resize((buffer_.size() + kAlignment - 1) / kAlignment * kAlignment);
    eJson view{{"buffer", 0}, {"byteOffset", buffer_.size()}, {"byteLength", bytes.size()}};
    if (use != eBufferUse::Data) {
        view["target"] = static_cast<int>(use);
    }
    buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
    return Add("bufferViews", std::move(view));
}

int eGlb::AddAccessor(std::span<const std::uint8_t> bytes, int componentType, const char* type,
                      std::size_t count, eBufferUse use) {
    const int view = AddBytes(bytes, use);
    return Add("accessors",
               {{"bufferView", view}, {"componentType", componentType}, {"count", count}, {"type", type}});
}

int eGlb::AddFloats(std::span<const float> values, int components, eBufferUse use, bool hasBounds) {
    const auto width = static_cast<std::size_t>(components);
    const int number = AddAccessor(BytesOf(values), kFloat, TypeOf(components), values.size() / width, use);
    if (hasBounds) {
        std::vector<float> lowest(values.begin(), values.begin() + components);
        std::vector<float> highest = lowest;
        for (std::size_t i = 0; i < values.size(); ++i) {
            lowest[i % width] = std::min(lowest[i % width], values[i]);
            highest[i % width] = std::max(highest[i % width], values[i]);
        }
        At("accessors", number).update({{"min", lowest}, {"max", highest}});
    }
    return number;
}

int eGlb::AddIndices(std::span<const std::uint16_t> indices) {
    return AddAccessor(BytesOf(indices), kUnsignedShort, "SCALAR", indices.size(), eBufferUse::Indices);
}

int eGlb::AddBytes4(std::span<const std::uint8_t> values) {
    return AddAccessor(values, kUnsignedByte, "VEC4", values.size() / 4, eBufferUse::Vertices);
}

int eGlb::AddShares4(std::span<const std::uint16_t> values) {
    const int number =
        AddAccessor(BytesOf(values), kUnsignedShort, "VEC4", values.size() / 4, eBufferUse::Vertices);
    At("accessors", number)["normalized"] = true;
    return number;
}

std::string eGlb::File() {
    if (!buffer_.empty()) {
        json_["buffers"] = eJson::array({{{"byteLength", buffer_.size()}}});
    }
    std::string chunks;
    AppendChunk(chunks, "JSON", json_.dump(-1, ' ', false, eJson::error_handler_t::replace), ' ');
    if (!buffer_.empty()) {
        AppendChunk(chunks, std::string_view("BIN\0", 4), std::string(buffer_.begin(), buffer_.end()), '\0');
    }
    constexpr std::size_t kHeader = 12;
    std::string file = "glTF";
    AppendNumber(file, 2);
    AppendNumber(file, kHeader + chunks.size());
    return file + chunks;
}

}  // namespace gltf
