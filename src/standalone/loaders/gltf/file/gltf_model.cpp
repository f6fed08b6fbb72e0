#include "standalone/loaders/gltf/file/gltf_model.h"

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "standalone/loaders/gltf/file/gltf_json.h"
#include "standalone/loaders/gltf/file/gltf_uri.h"

namespace standalone {
namespace {

int AccessorType(std::string_view word) {
    constexpr std::array<std::pair<std::string_view, int>, 7> kTypes = {{{"SCALAR", TINYGLTF_TYPE_SCALAR},
                                                                         {"VEC2", TINYGLTF_TYPE_VEC2},
                                                                         {"VEC3", TINYGLTF_TYPE_VEC3},
                                                                         {"VEC4", TINYGLTF_TYPE_VEC4},
                                                                         {"MAT2", TINYGLTF_TYPE_MAT2},
                                                                         {"MAT3", TINYGLTF_TYPE_MAT3},
                                                                         {"MAT4", TINYGLTF_TYPE_MAT4}}};
    for (const auto& [name, type] : kTypes) {
        if (name == word) {
            return type;
        }
    }
    return -1;
}

// Members that the checks leave alone count only where they are of the kind.
class eModelReader {
public:
    explicit eModelReader(const eJsonTree& document) : json(document) {}

    tinygltf::Model Read() const {
        tinygltf::Model model;
        Member(kJsonRoot, "extensionsUsed", model.extensionsUsed);
        Member(kJsonRoot, "bufferViews", model.bufferViews);
        Member(kJsonRoot, "accessors", model.accessors);
        Member(kJsonRoot, "meshes", model.meshes);
        Member(kJsonRoot, "nodes", model.nodes);
        Member(kJsonRoot, "scenes", model.scenes);
        Member(kJsonRoot, "scene", model.defaultScene);
        Member(kJsonRoot, "materials", model.materials);
        Member(kJsonRoot, "images", model.images);
        Member(kJsonRoot, "textures", model.textures);
        Member(kJsonRoot, "samplers", model.samplers);
        Member(kJsonRoot, "animations", model.animations);
        Member(kJsonRoot, "skins", model.skins);
        Member(kJsonRoot, "cameras", model.cameras);
        const eJsonIndex lights = FindJson(json, kJsonRoot, {"extensions", "KHR_lights_punctual"});
        if (lights != kNoJson) {
            Member(lights, "lights", model.lights);
        }
        return model;
    }

private:
    // Without the member the field stays as it is.
    template <class Field>
    void Member(eJsonIndex object, std::string_view key, Field& field) const {
        if (const eJsonIndex value = json.FindMember(object, key); value != kNoJson) {
            Get(value, field);
        }
    }

    void Get(eJsonIndex value, bool& field) const { field = json.values[value].isTrue; }
    void Get(eJsonIndex value, int& field) const { field = static_cast<int>(json.values[value].integer); }
    void Get(eJsonIndex value, std::size_t& field) const {
        field = static_cast<std::size_t>(json.values[value].integer);
    }
    void Get(eJsonIndex value, double& field) const { field = json.Double(value).value_or(field); }
    void Get(eJsonIndex value, std::string& field) const {
        if (json.Is(value, eJsonKind::Text)) {
            field = json.Text(value);
        }
    }
    void Get(eJsonIndex value, std::map<std::string, int>& field) const {
        for (const eJsonIndex member : json.Children(value)) {
            Get(member, field[std::string(json.Key(member))]);
        }
    }
    template <class Item>
    void Get(eJsonIndex value, std::vector<Item>& field) const {
        if (!json.Is(value, eJsonKind::Array)) {
            return;
        }
        field.resize(json.Count(value));
        auto item = field.begin();
        for (const eJsonIndex element : json.Children(value)) {
            Get(element, *item++);
        }
    }

    // Only objects are extensions.
    void Get(eJsonIndex value, tinygltf::ExtensionMap& field) const {
        const bool isObject = json.Is(value, eJsonKind::Object);
        for (const eJsonIndex extension : isObject ? json.Children(value) : json.NoChildren()) {
            if (json.Is(extension, eJsonKind::Object)) {
                field.emplace(json.Key(extension), ValueOf(extension));
            }
        }
    }

    tinygltf::Value ValueOf(eJsonIndex value) const {
        switch (json.Kind(value)) {
            case eJsonKind::Boolean:
                return tinygltf::Value(json.values[value].isTrue);
            case eJsonKind::Integer:
                return tinygltf::Value(static_cast<int>(json.values[value].integer));
            case eJsonKind::Real:
                return tinygltf::Value(*json.Double(value));
            case eJsonKind::Text:
                return tinygltf::Value(std::string(json.Text(value)));
            case eJsonKind::Array:
                return ListOf(value);
            case eJsonKind::Object:
                return ObjectOf(value);
            case eJsonKind::Null:
                break;
        }
        return {};
    }

    tinygltf::Value ListOf(eJsonIndex value) const {
        tinygltf::Value::Array list;
        for (const eJsonIndex element : json.Children(value)) {
            list.push_back(ValueOf(element));
        }
        return tinygltf::Value(std::move(list));
    }

    tinygltf::Value ObjectOf(eJsonIndex value) const {
        tinygltf::Value::Object object;
        for (const eJsonIndex member : json.Children(value)) {
            object.emplace(json.Key(member), ValueOf(member));
        }
        return tinygltf::Value(std::move(object));
    }

    // --- Nodes and what they show.

    void Get(eJsonIndex object, tinygltf::Scene& scene) const { Member(object, "nodes", scene.nodes); }

    void Get(eJsonIndex object, tinygltf::Node& node) const {
        Member(object, "name", node.name);
        Member(object, "mesh", node.mesh);
        Member(object, "skin", node.skin);
        Member(object, "camera", node.camera);
        Member(object, "children", node.children);
        Member(object, "matrix", node.matrix);
        Member(object, "translation", node.translation);
        Member(object, "rotation", node.rotation);
        Member(object, "scale", node.scale);
        Member(object, "weights", node.weights);
        Member(object, "extensions", node.extensions);
    }

    void Get(eJsonIndex object, tinygltf::Mesh& mesh) const {
        Member(object, "name", mesh.name);
        Member(object, "primitives", mesh.primitives);
        Member(object, "weights", mesh.weights);
    }

    void Get(eJsonIndex object, tinygltf::Primitive& primitive) const {
        primitive.mode = TINYGLTF_MODE_TRIANGLES;
        Member(object, "mode", primitive.mode);
        Member(object, "attributes", primitive.attributes);
        Member(object, "indices", primitive.indices);
        Member(object, "material", primitive.material);
        Member(object, "targets", primitive.targets);
        Member(object, "extensions", primitive.extensions);
    }

    void Get(eJsonIndex object, tinygltf::Skin& skin) const {
        Member(object, "joints", skin.joints);
        Member(object, "inverseBindMatrices", skin.inverseBindMatrices);
    }

    void Get(eJsonIndex object, tinygltf::Camera& camera) const {
        Member(object, "type", camera.type);
        Member(object, "perspective", camera.perspective);
    }

    void Get(eJsonIndex object, tinygltf::PerspectiveCamera& lens) const {
        Member(object, "yfov", lens.yfov);
        Member(object, "aspectRatio", lens.aspectRatio);
    }

    void Get(eJsonIndex object, tinygltf::Light& light) const {
        Member(object, "type", light.type);
        Member(object, "color", light.color);
        Member(object, "range", light.range);
        Member(object, "spot", light.spot);
    }

    void Get(eJsonIndex object, tinygltf::SpotLight& spot) const {
        Member(object, "innerConeAngle", spot.innerConeAngle);
        Member(object, "outerConeAngle", spot.outerConeAngle);
    }

    // --- Materials.

    void Get(eJsonIndex object, tinygltf::Material& material) const {
        material.emissiveFactor = {0, 0, 0};
        Member(object, "name", material.name);
        Member(object, "pbrMetallicRoughness", material.pbrMetallicRoughness);
        Member(object, "normalTexture", material.normalTexture);
        Member(object, "occlusionTexture", material.occlusionTexture);
        Member(object, "emissiveTexture", material.emissiveTexture);
        Member(object, "emissiveFactor", material.emissiveFactor);
        Member(object, "alphaMode", material.alphaMode);
        Member(object, "alphaCutoff", material.alphaCutoff);
        Member(object, "doubleSided", material.doubleSided);
    }

    void Get(eJsonIndex object, tinygltf::PbrMetallicRoughness& surface) const {
        Member(object, "baseColorFactor", surface.baseColorFactor);
        Member(object, "baseColorTexture", surface.baseColorTexture);
        Member(object, "metallicRoughnessTexture", surface.metallicRoughnessTexture);
    }

    void Get(eJsonIndex object, tinygltf::TextureInfo& info) const { GetTexture(object, info); }
    void Get(eJsonIndex object, tinygltf::OcclusionTextureInfo& info) const { GetTexture(object, info); }
    void Get(eJsonIndex object, tinygltf::NormalTextureInfo& info) const {
        GetTexture(object, info);
        Member(object, "scale", info.scale);
    }
    template <class Info>
    void GetTexture(eJsonIndex object, Info& info) const {
        Member(object, "index", info.index);
        Member(object, "texCoord", info.texCoord);
        Member(object, "extensions", info.extensions);
    }

    void Get(eJsonIndex object, tinygltf::Texture& texture) const {
        Member(object, "name", texture.name);
        Member(object, "source", texture.source);
        Member(object, "sampler", texture.sampler);
        Member(object, "extensions", texture.extensions);
    }

    void Get(eJsonIndex object, tinygltf::Sampler& sampler) const {
        Member(object, "wrapS", sampler.wrapS);
        Member(object, "wrapT", sampler.wrapT);
    }

    // A file beside this one tells its type by its name alone.
    void Get(eJsonIndex object, tinygltf::Image& image) const {
        Member(object, "name", image.name);
        Member(object, "uri", image.uri);
        Member(object, "bufferView", image.bufferView);
        if (image.bufferView >= 0) {
            Member(object, "mimeType", image.mimeType);
        } else if (const std::optional<eDataUri> data = SplitDataUri(image.uri)) {
            image.mimeType = data->mediaType;
        }
    }

    // --- Numbers and motion.

    void Get(eJsonIndex object, tinygltf::BufferView& view) const {
        Member(object, "buffer", view.buffer);
        Member(object, "byteOffset", view.byteOffset);
        Member(object, "byteLength", view.byteLength);
        Member(object, "byteStride", view.byteStride);
    }

    void Get(eJsonIndex object, tinygltf::Accessor& accessor) const {
        Member(object, "bufferView", accessor.bufferView);
        Member(object, "byteOffset", accessor.byteOffset);
        Member(object, "componentType", accessor.componentType);
        Member(object, "normalized", accessor.normalized);
        Member(object, "count", accessor.count);
        accessor.type = AccessorType(JsonText(json, object, "type"));
        if (const eJsonIndex sparse = json.FindMember(object, "sparse"); sparse != kNoJson) {
            GetSparse(sparse, accessor);
        }
    }

    void GetSparse(eJsonIndex object, tinygltf::Accessor& accessor) const {
        auto& sparse = accessor.sparse;
        sparse = {};
        sparse.isSparse = true;
        Member(object, "count", sparse.count);
        const eJsonIndex indices = json.FindMember(object, "indices");
        Member(indices, "bufferView", sparse.indices.bufferView);
        Member(indices, "byteOffset", sparse.indices.byteOffset);
        Member(indices, "componentType", sparse.indices.componentType);
        const eJsonIndex values = json.FindMember(object, "values");
        Member(values, "bufferView", sparse.values.bufferView);
        Member(values, "byteOffset", sparse.values.byteOffset);
    }

    void Get(eJsonIndex object, tinygltf::Animation& animation) const {
        Member(object, "name", animation.name);
        Member(object, "channels", animation.channels);
        Member(object, "samplers", animation.samplers);
    }

    void Get(eJsonIndex object, tinygltf::AnimationChannel& channel) const {
        Member(object, "sampler", channel.sampler);
        const eJsonIndex target = json.FindMember(object, "target");
        Member(target, "node", channel.target_node);
        Member(target, "path", channel.target_path);
        Member(target, "extensions", channel.target_extensions);
    }

    void Get(eJsonIndex object, tinygltf::AnimationSampler& sampler) const {
        Member(object, "input", sampler.input);
        Member(object, "output", sampler.output);
        Member(object, "interpolation", sampler.interpolation);
    }

    const eJsonTree& json;
};

}  // namespace

tinygltf::Model ReadGltfModel(const eJsonTree& json) {
    return eModelReader(json).Read();
}

}  // namespace standalone
