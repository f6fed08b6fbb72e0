#include "standalone/loaders/gltf/draco/draco_decode.h"

#include <draco/compression/decode.h>

#include <cstring>
#include <memory>

namespace standalone {
namespace {

std::unique_ptr<draco::Mesh> MeshOf(std::span<const std::uint8_t> bytes) {
    draco::DecoderBuffer buffer;
    buffer.Init(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    draco::Decoder decoder;
    auto mesh = decoder.DecodeMeshFromBuffer(&buffer);
    return mesh.ok() ? std::move(mesh).value() : nullptr;
}

std::optional<std::vector<std::uint32_t>> CornersOf(const draco::Mesh& mesh) {
    std::vector<std::uint32_t> corners;
    corners.reserve(std::size_t{3} * mesh.num_faces());
    for (draco::FaceIndex face(0); face < mesh.num_faces(); ++face) {
        for (const draco::PointIndex& corner : mesh.face(face)) {
            if (corner.value() >= mesh.num_points()) {
                return std::nullopt;
            }
            corners.push_back(corner.value());
        }
    }
    return corners;
}

// The numbers of all vertices, each taken as the component type has it.
template <class Component>
std::optional<std::vector<std::uint8_t>> ComponentsOf(const draco::PointAttribute& attribute,
                                                      std::size_t vertexCount) {
    if (!attribute.is_mapping_identity() && attribute.indices_map_size() < vertexCount) {
        return std::nullopt;
    }
    const std::size_t width = attribute.num_components();
    std::vector<Component> vertex(width);
    std::vector<std::uint8_t> bytes(vertexCount * width * sizeof(Component));
    for (std::size_t i = 0; i < vertexCount; ++i) {
        const draco::AttributeValueIndex value =
            attribute.mapped_index(draco::PointIndex(static_cast<std::uint32_t>(i)));
        if (value.value() >= attribute.size() ||
            !attribute.ConvertValue<Component>(value, static_cast<std::int8_t>(width), vertex.data())) {
            return std::nullopt;
        }
        std::memcpy(bytes.data() + i * width * sizeof(Component), vertex.data(), width * sizeof(Component));
    }
    return bytes;
}

std::optional<std::vector<std::uint8_t>> BytesOf(const draco::Mesh& mesh, const eDracoAttribute& wanted) {
    const draco::PointAttribute* attribute = mesh.GetAttributeByUniqueId(wanted.id);
    // Any byte may stand in for a truth value, which is none of the kinds of numbers that glTF has.
    if (attribute == nullptr || attribute->num_components() != wanted.width ||
        attribute->data_type() == draco::DT_BOOL) {
        return std::nullopt;
    }
    switch (wanted.componentType) {
        case 5120:
            return ComponentsOf<std::int8_t>(*attribute, mesh.num_points());
        case 5121:
            return ComponentsOf<std::uint8_t>(*attribute, mesh.num_points());
        case 5122:
            return ComponentsOf<std::int16_t>(*attribute, mesh.num_points());
        case 5123:
            return ComponentsOf<std::uint16_t>(*attribute, mesh.num_points());
        case 5125:
            return ComponentsOf<std::uint32_t>(*attribute, mesh.num_points());
        default:
            return ComponentsOf<float>(*attribute, mesh.num_points());
    }
}

}  // namespace

bool KnowsDraco() {
    return true;
}

std::optional<eDracoMesh> DecodeDraco(std::span<const std::uint8_t> bytes,
                                      std::span<const eDracoAttribute> attributes) {
    const std::unique_ptr<draco::Mesh> mesh = MeshOf(bytes);
    std::optional<std::vector<std::uint32_t>> corners = mesh ? CornersOf(*mesh) : std::nullopt;
    if (!corners) {
        return std::nullopt;
    }
    eDracoMesh decoded{mesh->num_points(), std::move(*corners), {}};
    for (const eDracoAttribute& wanted : attributes) {
        std::optional<std::vector<std::uint8_t>> numbers = BytesOf(*mesh, wanted);
        if (!numbers) {
            return std::nullopt;
        }
        decoded.attributes.push_back(std::move(*numbers));
    }
    return decoded;
}

}  // namespace standalone
