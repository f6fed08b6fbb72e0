// A .glb taken apart by the format's own rules.
#pragma once

#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace gltf_test {

struct eGlbReading {
    explicit eGlbReading(const std::string& file) {
        std::uint32_t length = 0;
        std::memcpy(&length, file.data() + 12, sizeof length);
        json = nlohmann::json::parse(file.substr(20, length));
        buffer = file.size() > 28 + length ? file.substr(28 + length) : std::string();
    }

    const nlohmann::json& Node(const std::string& name) const {
        for (const nlohmann::json& node : json["nodes"]) {
            if (node["name"] == name) {
                return node;
            }
        }
        throw std::out_of_range(name);
    }

    std::string Bytes(const nlohmann::json& view) const {
        const nlohmann::json& entry = json["bufferViews"][view.get<std::size_t>()];
        return buffer.substr(entry["byteOffset"].get<std::size_t>(), entry["byteLength"].get<std::size_t>());
    }

    template <class Value = float>
    std::vector<Value> Values(const nlohmann::json& accessor) const {
        const std::string bytes = Bytes(json["accessors"][accessor.get<std::size_t>()]["bufferView"]);
        std::vector<Value> values(bytes.size() / sizeof(Value));
        std::memcpy(values.data(), bytes.data(), bytes.size());
        return values;
    }

    // The sampler of a channel: its times in frames of 30 a second, and its values.
    std::pair<std::vector<float>, std::vector<float>> Track(const std::string& node, const char* path) const {
        const nlohmann::json& clip = json["animations"][0];
        for (const nlohmann::json& channel : clip["channels"]) {
            const auto target = channel["target"]["node"].get<std::size_t>();
            if (json["nodes"][target]["name"] == node && channel["target"]["path"] == path) {
                const nlohmann::json& sampler = clip["samplers"][channel["sampler"].get<std::size_t>()];
                std::vector<float> frames = Values(sampler["input"]);
                for (float& frame : frames) {
                    frame = std::round(frame * 30);
                }
                return {frames, Values(sampler["output"])};
            }
        }
        throw std::out_of_range(node);
    }

    nlohmann::json json;
    std::string buffer;
};

}  // namespace gltf_test
