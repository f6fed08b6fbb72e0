#include "support/gltf_text.h"

#include <cstring>

namespace support {
namespace {

template <class Number>
std::string BytesOf(const std::vector<Number>& numbers) {
    std::string bytes(numbers.size() * sizeof(Number), '\0');
    if (!numbers.empty()) {
        std::memcpy(bytes.data(), numbers.data(), bytes.size());
    }
    return bytes;
}

std::size_t Width(std::string_view type) {
    const std::pair<std::string_view, std::size_t> widths[] = {
        {"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4}, {"MAT4", 16}};
    for (const auto& [name, width] : widths) {
        if (name == type) {
            return width;
        }
    }
    return 1;
}

std::string List(const std::vector<std::string>& entries) {
    std::string list = "[";
    for (const std::string& entry : entries) {
        list += (list.size() == 1 ? "" : ", ") + entry;
    }
    return list + "]";
}

std::string Word(std::size_t number) {
    std::string word;
    for (int i = 0; i < 4; ++i) {
        word += static_cast<char>(number >> 8 * i);
    }
    return word;
}

}  // namespace

std::string Base64(std::string_view bytes) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        unsigned bits = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            bits = bits << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += i + k <= bytes.size() ? kDigits[bits >> (18 - 6 * k) & 63] : '=';
        }
    }
    return text;
}

std::string BinaryGltf(std::string json, std::string buffer) {
    json.resize((json.size() + 3) / 4 * 4, ' ');
    buffer.resize((buffer.size() + 3) / 4 * 4, '\0');
    std::string chunks = Word(json.size()) + "JSON" + json;
    if (!buffer.empty()) {
        chunks += Word(buffer.size()) + std::string("BIN\0", 4) + buffer;
    }
    return "glTF" + Word(2) + Word(12 + chunks.size()) + chunks;
}

int eGltfText::View(const std::string& bytes, std::string_view more) {
    buffer.resize((buffer.size() + 3) / 4 * 4, '\0');
    views.push_back("{\"buffer\": 0, \"byteOffset\": " + std::to_string(buffer.size()) +
                    ", \"byteLength\": " + std::to_string(bytes.size()) + std::string(more) + "}");
    buffer += bytes;
    return static_cast<int>(views.size()) - 1;
}

int eGltfText::Accessor(std::string json) {
    accessors.push_back(std::move(json));
    return static_cast<int>(accessors.size()) - 1;
}

int eGltfText::Add(std::string_view type, int componentType, std::size_t count, const std::string& bytes,
                   std::string_view more) {
    return Accessor("{\"bufferView\": " + std::to_string(View(bytes)) + ", \"componentType\": " +
                    std::to_string(componentType) + ", \"count\": " + std::to_string(count / Width(type)) +
                    ", \"type\": \"" + std::string(type) + "\"" + std::string(more) + "}");
}

int eGltfText::Floats(std::string_view type, const std::vector<float>& numbers) {
    return Add(type, 5126, numbers.size(), BytesOf(numbers), "");
}

int eGltfText::Shorts(std::string_view type, const std::vector<std::uint16_t>& numbers,
                      std::string_view more) {
    return Add(type, 5123, numbers.size(), BytesOf(numbers), more);
}

int eGltfText::Bytes(std::string_view type, const std::vector<std::uint8_t>& numbers, std::string_view more) {
    return Add(type, 5121, numbers.size(), BytesOf(numbers), more);
}

std::string eGltfText::Json(const std::string& bufferUri) const {
    std::string json = "{\"asset\": {\"version\": \"2.0\"}";
    if (!buffer.empty()) {
        json += ", \"buffers\": [{" + bufferUri + "\"byteLength\": " + std::to_string(buffer.size()) +
                "}], \"bufferViews\": " + List(views) + ", \"accessors\": " + List(accessors);
    }
    for (const auto& [name, section] : sections) {
        json += ", \"" + name + "\": " + section;
    }
    return json + "}";
}

std::string eGltfText::Text() const {
    const std::string behind = "the buffer ends before this";
    return Json("\"uri\": \"data:application/octet-stream;base64," + Base64(buffer + behind) + "\", ");
}

std::string eGltfText::Binary() const {
    return BinaryGltf(Json(""), buffer);
}

}  // namespace support
