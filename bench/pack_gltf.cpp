// Writes what packers make of a glTF file with one buffer, without loss, so that the scenes can be compared
// number by number. Pictures of a .gltf are left behind. Usage: pack_gltf FILE OUT; writes OUT_meshopt, every
// view by EXT_meshopt_compression in a file whose old buffer is only told, and OUT_draco, every mesh of
// indexed triangles by KHR_draco_mesh_compression.
#include <draco/compression/encode.h>
#include <meshoptimizer.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "support/gltf_text.h"

namespace {

using nlohmann::json;

struct eGltfParts {
    nlohmann::json json;
    std::string buffer;
};

const std::map<std::string, int> kWidths = {
    {"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4}, {"MAT4", 16}};
const std::map<int, draco::DataType> kTypes = {{5120, draco::DT_INT8},   {5121, draco::DT_UINT8},
                                               {5122, draco::DT_INT16},  {5123, draco::DT_UINT16},
                                               {5125, draco::DT_UINT32}, {5126, draco::DT_FLOAT32}};

std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

const char* BytesOf(const eGltfParts& parts, const json& accessor) {
    const json& view = parts.json["bufferViews"][accessor["bufferView"].get<std::size_t>()];
    return parts.buffer.data() + view.value("byteOffset", 0U) + accessor.value("byteOffset", 0U);
}

std::size_t StrideOf(const eGltfParts& parts, const json& accessor) {
    const std::size_t size = static_cast<std::size_t>(
        kWidths.at(accessor["type"]) * draco::DataTypeLength(kTypes.at(accessor["componentType"])));
    return parts.json["bufferViews"][accessor["bufferView"].get<std::size_t>()].value("byteStride", size);
}

std::string Finish(eGltfParts parts, const char* extension) {
    parts.json["extensionsRequired"].push_back(extension);
    parts.json["extensionsUsed"].push_back(extension);
    return support::BinaryGltf(parts.json.dump(), parts.buffer);
}

// Appends bytes to the buffer; their offset.
std::size_t Append(eGltfParts& parts, const std::string& bytes) {
    parts.buffer.resize((parts.buffer.size() + 3) / 4 * 4);
    parts.buffer += bytes;
    return parts.buffer.size() - bytes.size();
}

draco::GeometryAttribute::Type TypeOf(const std::string& name) {
    return name == "POSITION" ? draco::GeometryAttribute::POSITION
           : name == "NORMAL" ? draco::GeometryAttribute::NORMAL
                              : draco::GeometryAttribute::GENERIC;
}

void AddFaces(const eGltfParts& parts, const json& accessor, draco::Mesh& mesh) {
    const std::size_t size = StrideOf(parts, accessor);
    const auto corner = [&](std::size_t i) {
        std::uint32_t number = 0;
        std::memcpy(&number, BytesOf(parts, accessor) + i * size, size);
        return draco::PointIndex(number);
    };
    for (std::size_t i = 0; i < accessor["count"]; i += 3) {
        mesh.AddFace({corner(i), corner(i + 1), corner(i + 2)});
    }
}

std::uint32_t AddAttribute(const eGltfParts& parts, const std::string& name, const json& accessor,
                           draco::Mesh& mesh) {
    const int width = kWidths.at(accessor["type"]);
    const draco::DataType type = kTypes.at(accessor["componentType"]);
    draco::GeometryAttribute form;
    form.Init(TypeOf(name), nullptr, static_cast<std::uint8_t>(width), type,
              accessor.value("normalized", false), width * draco::DataTypeLength(type), 0);
    const auto count = accessor["count"].get<std::uint32_t>();
    mesh.set_num_points(count);
    const int number = mesh.AddAttribute(form, true, count);
    for (std::uint32_t i = 0; i < count; ++i) {
        mesh.attribute(number)->SetAttributeValue(draco::AttributeValueIndex(i),
                                                  BytesOf(parts, accessor) + i * StrideOf(parts, accessor));
    }
    return mesh.attribute(number)->unique_id();
}

void PackPrimitive(eGltfParts& parts, json& primitive, std::vector<std::size_t>& packed) {
    draco::Mesh mesh;
    json& accessors = parts.json["accessors"];
    packed.push_back(primitive["indices"]);
    AddFaces(parts, accessors[packed.back()], mesh);
    json ids;
    for (const auto& [name, accessor] : primitive["attributes"].items()) {
        packed.push_back(accessor);
        ids[name] = AddAttribute(parts, name, accessors[packed.back()], mesh);
    }
    draco::EncoderBuffer bytes;
    draco::Encoder encoder;
    if (!encoder.EncodeMeshToBuffer(mesh, &bytes).ok()) {
        throw std::runtime_error("draco refuses the mesh");
    }
    const std::size_t offset = Append(parts, {bytes.data(), bytes.size()});
    parts.json["bufferViews"].push_back(
        {{"buffer", 0}, {"byteOffset", offset}, {"byteLength", bytes.size()}});
    primitive["extensions"]["KHR_draco_mesh_compression"] = {
        {"bufferView", parts.json["bufferViews"].size() - 1}, {"attributes", ids}};
}

std::string EncodedVertices(const std::string& source, std::size_t stride) {
    const std::size_t count = source.size() / stride;
    std::vector<unsigned char> bytes(meshopt_encodeVertexBufferBound(count, stride));
    bytes.resize(meshopt_encodeVertexBuffer(bytes.data(), bytes.size(), source.data(), count, stride));
    return {bytes.begin(), bytes.end()};
}

std::string EncodedIndices(const std::string& source, std::size_t size) {
    std::vector<unsigned> indices(source.size() / size);
    for (std::size_t i = 0; i < indices.size(); ++i) {
        std::memcpy(&indices[i], source.data() + i * size, size);
    }
    std::vector<unsigned char> bytes(meshopt_encodeIndexSequenceBound(indices.size(), indices.size()) + 64);
    bytes.resize(meshopt_encodeIndexSequence(bytes.data(), bytes.size(), indices.data(), indices.size()));
    return {bytes.begin(), bytes.end()};
}

eGltfParts ReadGltfParts(const std::string& path) {
    const std::string file = ContentOf(path);
    if (!file.starts_with("glTF")) {
        eGltfParts parts{json::parse(file), {}};
        const std::string uri = parts.json["buffers"][0]["uri"];
        parts.json["buffers"][0].erase("uri");
        parts.json["images"] = {{{"uri", "picture.png"}}};
        parts.buffer = ContentOf(std::filesystem::path(path).parent_path() / uri);
        return parts;
    }
    std::uint32_t length = 0;
    std::memcpy(&length, file.data() + 12, sizeof length);
    return {json::parse(file.substr(20, length)), file.substr(28 + length)};
}

std::string MeshoptVersion(eGltfParts parts) {
    const std::string whole = std::exchange(parts.buffer, {});
    json& views = parts.json["bufferViews"];
    std::map<std::size_t, std::size_t> indexSizes;  // by view
    for (const json& accessor : parts.json["accessors"]) {
        if (accessor["type"] == "SCALAR" && accessor["componentType"] != 5126) {
            const int type = accessor["componentType"];
            indexSizes[accessor["bufferView"]] = type == 5125 ? 4 : type == 5123 ? 2 : 1;
        }
    }
    for (std::size_t i = 0; i < views.size(); ++i) {
        const std::size_t length = views[i]["byteLength"];
        const std::string source = whole.substr(views[i].value("byteOffset", std::size_t{0}), length);
        const std::size_t stride =
            indexSizes.contains(i) ? indexSizes[i] : views[i].value("byteStride", std::size_t{4});
        if (stride == 1 || length % stride != 0) {
            views[i]["byteOffset"] = Append(parts, source);
            continue;
        }
        const std::string bytes =
            indexSizes.contains(i) ? EncodedIndices(source, stride) : EncodedVertices(source, stride);
        views[i]["buffer"] = 1;
        views[i]["extensions"]["EXT_meshopt_compression"] = {
            {"buffer", 0},
            {"byteOffset", Append(parts, bytes)},
            {"byteLength", bytes.size()},
            {"byteStride", stride},
            {"count", length / stride},
            {"mode", indexSizes.contains(i) ? "INDICES" : "ATTRIBUTES"}};
    }
    parts.json["buffers"] = {
        {{"byteLength", parts.buffer.size()}},
        {{"byteLength", whole.size()}, {"extensions", {{"EXT_meshopt_compression", {{"fallback", true}}}}}}};
    return Finish(std::move(parts), "EXT_meshopt_compression");
}

std::string DracoVersion(eGltfParts parts) {
    std::vector<std::size_t> packed;
    for (json& mesh : parts.json["meshes"]) {
        for (json& primitive : mesh["primitives"]) {
            if (primitive.value("mode", 4) == 4 && primitive.contains("indices")) {
                PackPrimitive(parts, primitive, packed);
            }
        }
    }
    for (const std::size_t accessor : packed) {
        parts.json["accessors"][accessor].erase("bufferView");
        parts.json["accessors"][accessor].erase("byteOffset");
    }
    parts.json["buffers"][0]["byteLength"] = parts.buffer.size();
    return Finish(std::move(parts), "KHR_draco_mesh_compression");
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        return 2;
    }
    const eGltfParts parts = ReadGltfParts(arguments[1]);
    const std::string out = arguments[2];
    std::ofstream(out + "_meshopt", std::ios::binary) << MeshoptVersion(parts);
    std::ofstream(out + "_draco", std::ios::binary) << DracoVersion(parts);
    return 0;
}
