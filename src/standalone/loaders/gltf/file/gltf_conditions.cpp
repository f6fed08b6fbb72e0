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
    void Refuse(eJsonIndex value, std::string text) { report.Problem(json.PathOf(value), std::move(text)); }

    void CheckVersion() {
        const eJsonIndex asset = json.FindMember(kJsonRoot, "asset");
        const std::string_view version = JsonText(json, asset, "version");
        const std::string_view least = JsonText(json, asset, "minVersion");
        if (!version.starts_with("2.") || (!least.empty() && least != "2.0")) {
            Refuse(asset, "version " + std::string(least.empty() ? version : least) +
                              " of the format is not known, only 2.0");
        }
    }

    void CheckRequiredExtensions() {
        for (const eJsonIndex name : GltfEntries(json, "extensionsRequired")) {
            if (!json.Is(name, eJsonKind::Text)) {
                Refuse(name, "a text is expected");
            } else if (const std::string reason = ReasonAgainstGltfExtension(json.Text(name));
                       !reason.empty()) {
                Refuse(name, "the file can't be read without the extension " + std::string(json.Text(name)) +
                                 ", which " + reason);
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
                Refuse(view, std::to_string(length) + " bytes from byte " + std::to_string(offset) +
                                 " on lie beyond the " + std::to_string(size) + " bytes of the buffer");
            }
            const std::int64_t stride = JsonWhole(json, view, "byteStride", 4);
            if (stride < 4 || stride > 252 || stride % 4 != 0) {
                Refuse(view, "the stride is no multiple of 4 from 4 to 252");
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
                    Refuse(primitive, "the indices have no buffer view");
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
                Refuse(image, "either \"uri\" or \"bufferView\" is expected");
            } else if (IsDataUri(JsonText(json, image, "uri"))) {
                CheckDataUri(json.FindMember(image, "uri"));
            }
        }
    }

    void CheckDataUri(eJsonIndex uri) {
        const std::optional<eDataUri> data = SplitDataUri(json.Text(uri));
        const auto bytes = data ? DecodeBase64(data->base64) : std::nullopt;
        if (!bytes || bytes->empty()) {
            Refuse(uri, "the data URI holds nothing in base 64");
        }
    }

    void CheckTextureSet(eJsonIndex info) {
        if (info == kNoJson) {
            return;
        }
        const eJsonIndex transform = FindJson(json, info, {"extensions", "KHR_texture_transform"});
        for (const eJsonIndex object : {info, transform}) {
            if (object != kNoJson && JsonWhole(json, object, "texCoord", 0) > kLastTextureSet) {
                Refuse(object, "the host has no map channel for that set of coordinates");
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
                Refuse(camera, "\"" + std::string(type) + "\" is missing");
            } else if (type == "perspective") {
                CheckAngle(json.FindMember(lens, "yfov"));
                CheckAspect(json.FindMember(lens, "aspectRatio"));
            }
        }
    }

    void CheckAngle(eJsonIndex value) {
        const double angle = *json.Double(value);
        if (!(angle > 0 && angle < std::numbers::pi)) {
            Refuse(value, "the angle is not between 0 and a half turn");
        }
    }

    void CheckAspect(eJsonIndex value) {
        if (value != kNoJson && !(*json.Float(value) > 0)) {
            Refuse(value, "the number must be above 0");
        }
    }

    void CheckLights() {
        const eJsonIndex list = FindJson(json, kJsonRoot, {"extensions", "KHR_lights_punctual", "lights"});
        for (const eJsonIndex light : JsonElements(json, list)) {
            if (JsonText(json, light, "type") == "spot" && json.FindMember(light, "spot") == kNoJson) {
                Refuse(light, "\"spot\" is missing");
            }
        }
    }

    void CheckChannels() {
        for (const eJsonIndex animation : GltfEntries(json, "animations")) {
            const std::size_t samplers = json.Count(json.FindMember(animation, "samplers"));
            for (const eJsonIndex channel : JsonElements(json, json.FindMember(animation, "channels"))) {
                const std::int64_t sampler = JsonWhole(json, channel, "sampler", 0);
                if (static_cast<std::uint64_t>(sampler) >= samplers) {
                    Refuse(channel, "there is no entry " + std::to_string(sampler) + " among the " +
                                        std::to_string(samplers) + " samplers");
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
