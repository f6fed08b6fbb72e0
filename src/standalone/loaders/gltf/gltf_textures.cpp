#include "standalone/loaders/gltf/gltf_textures.h"

#include <cmath>
#include <numbers>

#include "base/ansi.h"
#include "standalone/loaders/gltf/file/gltf_extensions.h"

namespace standalone {
namespace {

constexpr int kFirstTextureChannel = 1;

float NumberAt(const tinygltf::Value& list, int index) {
    return static_cast<float>(list.Get(index).GetNumberAsDouble());
}

// The transform of the file turns coordinates whose v runs down:
//     u' = offset.x + cos sx u + sin sy v,   v' = offset.y - sin sx u + cos sy v
// and the host's those whose v runs up: U = u, V = 1 - v; scaled, turned the other way round, and moved. What
// makes (U', 1 - V') of the host the (u', v') of the file is the same scale and angle with the offset below.
eMapCoordinates CoordinatesOf(int texCoord, const tinygltf::ExtensionMap& extensions) {
    eMapCoordinates coordinates;
    coordinates.channel = texCoord + kFirstTextureChannel;
    const auto found = extensions.find("KHR_texture_transform");
    if (found == extensions.end()) {
        return coordinates;
    }
    const tinygltf::Value& transform = found->second;
    host::Point2 offset;
    double angle = 0;
    if (transform.Has("offset")) {
        offset = {NumberAt(transform.Get("offset"), 0), NumberAt(transform.Get("offset"), 1)};
    }
    if (transform.Has("scale")) {
        coordinates.tiling = {NumberAt(transform.Get("scale"), 0), NumberAt(transform.Get("scale"), 1)};
    }
    if (transform.Has("rotation")) {
        angle = transform.Get("rotation").GetNumberAsDouble();
    }
    if (transform.Has("texCoord")) {
        coordinates.channel = transform.Get("texCoord").GetNumberAsInt() + kFirstTextureChannel;
    }
    const double scaleV = coordinates.tiling.y;
    coordinates.angle = static_cast<float>(angle * 180 / std::numbers::pi);
    coordinates.offset = {static_cast<float>(offset.x + std::sin(angle) * scaleV),
                          static_cast<float>(1 - offset.y - std::cos(angle) * scaleV)};
    return coordinates;
}

void NoticeWrapModes(eGltfImport& import, const tinygltf::Texture& texture) {
    if (texture.sampler < 0) {
        return;
    }
    const tinygltf::Sampler& sampler = import.model.samplers[static_cast<std::size_t>(texture.sampler)];
    if (sampler.wrapS != TINYGLTF_TEXTURE_WRAP_REPEAT || sampler.wrapT != TINYGLTF_TEXTURE_WRAP_REPEAT) {
        import.report.CannotShow(ePhrase::LostWrapping);
    }
}

// What the texture's picture is, where it is of a kind that isn't read; empty where there is another.
std::string UnreadPicture(const tinygltf::Model& model, const tinygltf::Texture& texture) {
    if (texture.source >= 0) {
        return UnreadKind(model.images[static_cast<std::size_t>(texture.source)]);
    }
    for (const auto& [extension, value] : texture.extensions) {
        if (NamesGltfPicture(extension)) {
            return extension;
        }
    }
    return "";
}

}  // namespace

template <class TextureInfo>
int MakeGltfTexture(eGltfImport& import, eGltfImages& images, const TextureInfo& info,
                    const std::string& material) {
    const tinygltf::Texture& texture = import.model.textures[static_cast<std::size_t>(info.index)];
    const std::string unread = UnreadPicture(import.model, texture);
    if (!unread.empty()) {
        import.report.Notice(eMessageId::ImportUnreadPicture, ToUtf8(material) + " (" + unread + ")");
        return -1;
    }
    if (texture.source < 0) {
        import.report.CannotShow(ePhrase::LostTexture);
        return -1;
    }
    NoticeWrapModes(import, texture);
    const std::string& imageName = import.model.images[static_cast<std::size_t>(texture.source)].name;
    eMapData map;
    map.name = import.report.Ansi(texture.name.empty() ? imageName : texture.name);
    map.coordinates = CoordinatesOf(info.texCoord, info.extensions);
    map.kind = images.Bitmap(texture.source);
    import.scene.maps.push_back(std::move(map));
    return static_cast<int>(import.scene.maps.size()) - 1;
}

template int MakeGltfTexture(eGltfImport&, eGltfImages&, const tinygltf::TextureInfo&, const std::string&);
template int MakeGltfTexture(eGltfImport&, eGltfImages&, const tinygltf::NormalTextureInfo&,
                             const std::string&);

}  // namespace standalone
