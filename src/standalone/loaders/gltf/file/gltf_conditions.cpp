#include "standalone/loaders/gltf/file/gltf_conditions.h"

#include <cstdint>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "standalone/loaders/gltf/draco/draco_decode.h"
#include "standalone/loaders/gltf/file/gltf_extensions.h"
#include "standalone/loaders/gltf/file/gltf_json.h"
#include "standalone/loaders/gltf/file/gltf_uri.h"

namespace standalone {
namespace {

// The host's map channels end at 99, and the first set is channel 1.
constexpr std::int64_t kLastTextureSet = 98;

class eConditions {
public:
    eConditions(const eJsonTree& document, eImportReport& ownReport) : json(document), report(ownReport) {}

    void Check() {
        CheckVersion();
        CheckRequiredExtensions();
        CheckBufferViews();
        CheckPrimitives();
        CheckImages();
        CheckTextureSets();
        CheckCameras();
        CheckLights();
        CheckChannels();
    }

private:
    template <class... Values>
    void Refuse(eJsonIndex value, eMessageId id, const Values&... values) {
        report.Problem(json.PathOf(value), id, values...);
    }

    void CheckVersion() {
        const eJsonIndex asset = json.FindMember(kJsonRoot, "asset");
        const std::string_view version = JsonText(json, asset, "version");
        const std::string_view least = JsonText(json, asset, "minVersion");
        if (!version.starts_with("2.") || (!least.empty() && least != "2.0")) {
            Refuse(asset, eMessageId::GltfVersion, least.empty() ? version : least);
        }
    }

    void CheckRequiredExtensions() {
        for (const eJsonIndex name : GltfEntries(json, "extensionsRequired")) {
            if (!json.Is(name, eJsonKind::Text)) {
                Refuse(name, eMessageId::GltfExpected, Utf8Words(ePhrase::JsonText));
            } else if (const std::optional<ePhrase> reason = ReasonAgainstGltfExtension(json.Text(name))) {
                Refuse(name, eMessageId::GltfExtension, json.Text(name), Utf8Words(*reason));
            }
        }
    }

    void CheckBufferViews() {
        const std::vector<eJsonIndex> buffers = GltfEntries(json, "buffers");
        for (const eJsonIndex view : GltfEntries(json, "bufferViews")) {
            const eJsonIndex buffer = buffers[static_cast<std::size_t>(JsonWhole(json, view, "buffer", 0))];
            const std::int64_t size = JsonWhole(json, buffer, "byteLength", 0);
            const std::int64_t offset = JsonWhole(json, view, "byteOffset", 0);
            const std::int64_t length = JsonWhole(json, view, "byteLength", 0);
            if (length > size || offset > size - length) {
                Refuse(view, eMessageId::GltfViewRange, length, offset, size);
            }
            const std::int64_t stride = JsonWhole(json, view, "byteStride", 4);
            if (stride < 4 || stride > 252 || stride % 4 != 0) {
                Refuse(view, eMessageId::GltfViewStride);
            }
        }
    }

    void CheckPrimitives() {
        const std::vector<eJsonIndex> accessors = GltfEntries(json, "accessors");
        for (const eJsonIndex mesh : GltfEntries(json, "meshes")) {
            for (const eJsonIndex primitive : JsonElements(json, json.FindMember(mesh, "primitives"))) {
                const std::int64_t indices = JsonWhole(json, primitive, "indices", -1);
                if (indices >= 0 && !IsPacked(primitive) &&
                    json.FindMember(accessors[static_cast<std::size_t>(indices)], "bufferView") == kNoJson) {
                    Refuse(primitive, eMessageId::GltfIndicesWithoutView);
                }
            }
        }
    }

    bool IsPacked(eJsonIndex primitive) const {
        return KnowsDraco() &&
               FindJson(json, primitive, {"extensions", "KHR_draco_mesh_compression"}) != kNoJson;
    }

    void CheckImages() {
        for (const eJsonIndex image : GltfEntries(json, "images")) {
            const bool hasUri = json.FindMember(image, "uri") != kNoJson;
            const bool hasView = json.FindMember(image, "bufferView") != kNoJson;
            if (hasUri == hasView) {
                Refuse(image, eMessageId::GltfImageSource);
            } else if (IsDataUri(JsonText(json, image, "uri"))) {
                CheckDataUri(json.FindMember(image, "uri"));
            }
        }
    }

    void CheckDataUri(eJsonIndex uri) {
        const std::optional<eDataUri> data = SplitDataUri(json.Text(uri));
        const auto bytes = data ? DecodeBase64(data->base64) : std::nullopt;
        if (!bytes || bytes->empty()) {
            Refuse(uri, eMessageId::GltfImageData);
        }
    }

    void CheckTextureSet(eJsonIndex info) {
        if (info == kNoJson) {
            return;
        }
        const eJsonIndex transform = FindJson(json, info, {"extensions", "KHR_texture_transform"});
        for (const eJsonIndex object : {info, transform}) {
            if (object != kNoJson && JsonWhole(json, object, "texCoord", 0) > kLastTextureSet) {
                Refuse(object, eMessageId::GltfCoordinateSet);
            }
        }
    }

    void CheckTextureSets() {
        for (const eJsonIndex material : GltfEntries(json, "materials")) {
            CheckTextureSet(FindJson(json, material, {"pbrMetallicRoughness", "baseColorTexture"}));
            CheckTextureSet(FindJson(json, material, {"normalTexture"}));
        }
    }

    void CheckCameras() {
        for (const eJsonIndex camera : GltfEntries(json, "cameras")) {
            const std::string_view type = JsonText(json, camera, "type");
            const eJsonIndex lens = json.FindMember(camera, type);
            if (lens == kNoJson) {
                Refuse(camera, eMessageId::GltfMissingMember, type);
            } else if (type == "perspective") {
                CheckAngle(json.FindMember(lens, "yfov"));
                CheckAspect(json.FindMember(lens, "aspectRatio"));
            }
        }
    }

    void CheckAngle(eJsonIndex value) {
        const double angle = *json.Double(value);
        if (!(angle > 0 && angle < std::numbers::pi)) {
            Refuse(value, eMessageId::GltfCameraAngle);
        }
    }

    void CheckAspect(eJsonIndex value) {
        if (value != kNoJson && !(*json.Float(value) > 0)) {
            Refuse(value, eMessageId::GltfAboveZero);
        }
    }

    void CheckLights() {
        const eJsonIndex list = FindJson(json, kJsonRoot, {"extensions", "KHR_lights_punctual", "lights"});
        for (const eJsonIndex light : JsonElements(json, list)) {
            if (JsonText(json, light, "type") == "spot" && json.FindMember(light, "spot") == kNoJson) {
                Refuse(light, eMessageId::GltfMissingMember, "spot");
            }
        }
    }

    void CheckChannels() {
        for (const eJsonIndex animation : GltfEntries(json, "animations")) {
            const std::size_t samplers = json.Count(json.FindMember(animation, "samplers"));
            for (const eJsonIndex channel : JsonElements(json, json.FindMember(animation, "channels"))) {
                const std::int64_t sampler = JsonWhole(json, channel, "sampler", 0);
                if (static_cast<std::uint64_t>(sampler) >= samplers) {
                    Refuse(channel, eMessageId::GltfNoEntry, sampler, samplers, "samplers");
                }
            }
        }
    }

    const eJsonTree& json;
    eImportReport& report;
};

}  // namespace

void CheckGltfConditions(const eJsonTree& json, eImportReport& report) {
    eConditions(json, report).Check();
}

}  // namespace standalone
