#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace support {

// glTF files in a few lines of code. The numbers go into one buffer, a buffer view and an accessor at a time;
// everything else is the JSON text of a section:
//
//     support::eGltfText file;
//     file.Floats("VEC3", {0, 0, 0, 1, 0, 0, 0, 1, 0});  // accessor 0
//     file.Section("meshes", R"([{"primitives": [{"attributes": {"POSITION": 0}}]}])");
//     file.Section("nodes", R"([{"mesh": 0}])");
//     standalone::ImportGltf("/a.gltf", file.Text(), {});
class eGltfText {
public:
    // Adds an accessor; the result is its number. The type is that of the elements: "SCALAR", "VEC3", ...
    int Floats(std::string_view type, const std::vector<float>& numbers);
    int Shorts(std::string_view type, const std::vector<std::uint16_t>& numbers, std::string_view more = "");
    int Bytes(std::string_view type, const std::vector<std::uint8_t>& numbers, std::string_view more = "");
    // An accessor as JSON, for those with a form of their own; ViewOf gives buffer views for it.
    int Accessor(std::string json);
    // Adds bytes as a buffer view; the result is its number. `more` are further members, after a comma.
    int View(const std::string& bytes, std::string_view more = "");

    void Section(const std::string& name, const std::string& json) { sections.emplace_back(name, json); }

    // As JSON with the buffer in a data URI, and as a binary file.
    std::string Text() const;
    std::string Binary() const;

private:
    int Add(std::string_view type, int componentType, std::size_t count, const std::string& bytes,
            std::string_view more);
    std::string Json(const std::string& bufferUri) const;

    std::string buffer;
    std::vector<std::string> views;
    std::vector<std::string> accessors;
    std::vector<std::pair<std::string, std::string>> sections;
};

std::string Base64(std::string_view bytes);

// JSON and buffer framed as a binary file.
std::string BinaryGltf(std::string json, std::string buffer);

}  // namespace support
