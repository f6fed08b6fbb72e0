#include "standalone/loaders/gltf/file/gltf_unpack.h"

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "standalone/loaders/gltf/draco/draco_decode.h"
#include "standalone/loaders/gltf/file/gltf_json.h"
#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/meshopt/meshopt_decode.h"

namespace standalone {
namespace {

using eBytes = std::vector<std::uint8_t>;
using eDocument = nlohmann::ordered_json;

constexpr std::string_view kMeshopt = "EXT_meshopt_compression";
constexpr std::string_view kDraco = "KHR_draco_mesh_compression";

// Beyond this a file asks for more memory than any scene is worth.
constexpr std::size_t kMostUnpacked = std::size_t{1} << 30;

constexpr int kUnsignedInt = 5125;
constexpr int kTriangles = 4;

// The extension of an object, null where it has none.
eDocument* ExtensionOf(eDocument& object, std::string_view extension) {
    const auto extensions = object.find("extensions");
    if (extensions == object.end() || !extensions->contains(extension)) {
        return nullptr;
    }
    return &extensions->at(extension);
}

std::size_t SizeAt(const eDocument& object, const char* key) {
    return object.value(key, std::size_t{0});
}

std::size_t WidthOf(const std::string& accessorType) {
    static const std::map<std::string, std::size_t> kWidths = {
        {"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4}, {"MAT2", 4}, {"MAT3", 9}, {"MAT4", 16}};
    return kWidths.at(accessorType);
}

class eUnpacking {
public:
    eUnpacking(const eGltfContainer& ownContainer, std::vector<eBytes> ownBuffers, eImportReport& ownReport)
        : container(ownContainer),
          buffers(std::move(ownBuffers)),
          report(ownReport),
          document(eDocument::parse(container.json)) {}

    ePlainGltf Unpack() {
        for (std::size_t view = 0; view < List("bufferViews").size(); ++view) {
            UnpackView(view);
        }
        UnpackMeshes();
        if (!report.HasProblems()) {
            ForgetStandIns();
        }
        NameNodesOfChannels();
        const std::string json = document.dump();
        return {container.isBinary ? FrameGltf(json, container.binary) : json, std::move(buffers)};
    }

private:
    // A list at the top of the document; another, empty one where it has none.
    eDocument& List(const char* key) {
        const auto list = document.find(key);
        return list == document.end() ? noList : *list;
    }

    // The bytes of a view, or of an extension that has the members of one. The document is checked against
    // the lengths that it tells, and those against the bytes.
    std::optional<std::span<const std::uint8_t>> BytesOf(const eDocument& view) const {
        const std::size_t number = SizeAt(view, "buffer");
        const std::span<const std::uint8_t> all =
            IsBinaryPart(number) ? std::span(reinterpret_cast<const std::uint8_t*>(container.binary.data()),
                                             container.binary.size())
                                 : std::span(buffers[number]);
        const std::size_t offset = SizeAt(view, "byteOffset"), length = SizeAt(view, "byteLength");
        if (offset > all.size() || length > all.size() - offset) {
            return std::nullopt;
        }
        return all.subspan(offset, length);
    }

    bool IsBinaryPart(std::size_t buffer) const {
        return buffer == 0 && container.isBinary && buffers[0].empty();
    }

    // A buffer of its own for unpacked bytes; its number.
    std::size_t AddBuffer(eBytes bytes) {
        const std::size_t number = buffers.size();
        List("buffers").push_back(
            {{"byteLength", bytes.size()}, {"uri", "unpacked_" + std::to_string(number)}});
        buffers.push_back(std::move(bytes));
        return number;
    }

    bool Affords(std::size_t size, const std::string& place) {
        unpacked += size;
        if (unpacked > kMostUnpacked) {
            report.Problem(place, eMessageId::GltfUnpackedSize);
        }
        return unpacked <= kMostUnpacked;
    }

    void UnpackView(std::size_t number) {
        const eDocument* packed = ExtensionOf(List("bufferViews")[number], kMeshopt);
        if (packed == nullptr || !KnowsMeshopt()) {
            return;
        }
        const std::string place = GltfPlace("bufferViews", number);
        const auto bytes = BytesOf(*packed);
        std::optional<eBytes> elements =
            bytes ? DecodeMeshopt({*bytes, SizeAt(*packed, "count"), SizeAt(*packed, "byteStride"),
                                   packed->at("mode").get_ref<const std::string&>(),
                                   packed->value("filter", std::string())})
                  : std::nullopt;
        if (!elements || elements->empty()) {
            report.Problem(place, eMessageId::MeshoptBytes, kMeshopt);
        } else if (Affords(elements->size(), place)) {
            eDocument& view = List("bufferViews")[number];
            view["byteOffset"] = 0;
            view["byteLength"] = elements->size();
            view["buffer"] = AddBuffer(std::move(*elements));
        }
    }

    void UnpackMeshes() {
        eDocument& meshes = List("meshes");
        for (std::size_t mesh = 0; mesh < meshes.size() && KnowsDraco(); ++mesh) {
            eDocument& primitives = meshes[mesh].at("primitives");
            for (std::size_t i = 0; i < primitives.size(); ++i) {
                if (const eDocument* packed = ExtensionOf(primitives[i], kDraco)) {
                    UnpackPrimitive(primitives[i], *packed,
                                    GltfPlace("meshes", mesh) + "/primitives/" + std::to_string(i));
                }
            }
        }
    }

    void UnpackPrimitive(eDocument& primitive, const eDocument& packed, const std::string& place) {
        std::vector<std::size_t> accessors;
        std::vector<eDracoAttribute> wanted;
        for (const auto& [name, id] : packed.at("attributes").items()) {
            if (const auto accessor = primitive.at("attributes").find(name);
                accessor != primitive.at("attributes").end()) {
                accessors.push_back(accessor->get<std::size_t>());
                wanted.push_back(WantedFor(accessors.back(), id.get<std::uint32_t>()));
            }
        }
        const auto bytes = BytesOf(List("bufferViews")[packed.at("bufferView").get<std::size_t>()]);
        std::optional<eDracoMesh> mesh = bytes ? DecodeDraco(*bytes, wanted) : std::nullopt;
        if (!mesh || mesh->corners.empty()) {
            report.Problem(place, eMessageId::DracoBytes, kDraco);
            return;
        }
        for (std::size_t i = 0; i < accessors.size(); ++i) {
            Fill(accessors[i], mesh->vertexCount, std::move(mesh->attributes[i]), place);
        }
        SetCorners(primitive, mesh->corners, place);
    }

    eDracoAttribute WantedFor(std::size_t number, std::uint32_t id) {
        const eDocument& accessor = List("accessors")[number];
        return {id, accessor.at("componentType").get<int>(), WidthOf(accessor.at("type").get<std::string>())};
    }

    void Fill(std::size_t accessor, std::size_t count, eBytes bytes, const std::string& place) {
        if (!Affords(bytes.size(), place)) {
            return;
        }
        eDocument& views = List("bufferViews");
        views.push_back({{"byteLength", bytes.size()}, {"buffer", 0}});
        views.back()["buffer"] = AddBuffer(std::move(bytes));
        eDocument& filled = List("accessors")[accessor];
        filled["bufferView"] = views.size() - 1;
        filled["byteOffset"] = 0;
        filled["count"] = count;
    }

    void SetCorners(eDocument& primitive, const std::vector<std::uint32_t>& corners,
                    const std::string& place) {
        if (!primitive.contains("indices")) {
            primitive["indices"] = List("accessors").size();
            List("accessors").push_back({{"type", "SCALAR"}});
        }
        const auto accessor = primitive["indices"].get<std::size_t>();
        const auto* first = reinterpret_cast<const std::uint8_t*>(corners.data());
        List("accessors")[accessor]["componentType"] = kUnsignedInt;
        Fill(accessor, corners.size(), eBytes(first, first + corners.size() * sizeof(std::uint32_t)), place);
        primitive["mode"] = kTriangles;
    }

    // Buffers that hold nothing, as their views are all compressed.
    void ForgetStandIns() {
        for (std::size_t i = 0; i < List("bufferViews").size(); ++i) {
            const auto buffer = List("bufferViews")[i].at("buffer").get<std::size_t>();
            if (IsStandIn(buffer)) {
                report.Problem(GltfPlace("bufferViews", i), eMessageId::GltfViewPacked);
            }
        }
        for (std::size_t i = 0; i < buffers.size(); ++i) {
            if (IsStandIn(i)) {
                List("buffers")[i] = {{"byteLength", 1}, {"uri", "stand_in"}};
                buffers[i] = {0};
            }
        }
    }

    bool IsStandIn(std::size_t buffer) {
        eDocument& entry = List("buffers")[buffer];
        return !IsBinaryPart(buffer) && !entry.contains("uri") && ExtensionOf(entry, kMeshopt) != nullptr;
    }

    void NameNodesOfChannels() {
        for (eDocument& animation : List("animations")) {
            for (eDocument& channel : animation.at("channels")) {
                channel.at("target").emplace("node", -1);
            }
        }
    }

    const eGltfContainer& container;
    std::vector<eBytes> buffers;
    eImportReport& report;
    eDocument document;
    eDocument noList = eDocument::array();
    std::size_t unpacked = 0;  // bytes, so far
};

bool HasExtension(const eJsonTree& json, eJsonIndex object, std::string_view extension) {
    return FindJson(json, object, {"extensions", extension}) != kNoJson;
}

bool HasPackedMesh(const eJsonTree& json) {
    for (const eJsonIndex mesh : GltfEntries(json, "meshes")) {
        for (const eJsonIndex primitive : JsonElements(json, json.FindMember(mesh, "primitives"))) {
            if (HasExtension(json, primitive, kDraco)) {
                return true;
            }
        }
    }
    return false;
}

bool HasChannelWithoutNode(const eJsonTree& json) {
    for (const eJsonIndex animation : GltfEntries(json, "animations")) {
        for (const eJsonIndex channel : JsonElements(json, json.FindMember(animation, "channels"))) {
            if (FindJson(json, channel, {"target", "node"}) == kNoJson) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

bool NeedsUnpacking(const eJsonTree& json) {
    for (const std::string_view list : {"buffers", "bufferViews"}) {
        for (const eJsonIndex entry : GltfEntries(json, list)) {
            if (HasExtension(json, entry, kMeshopt)) {
                return true;
            }
        }
    }
    return HasPackedMesh(json) || HasChannelWithoutNode(json);
}

ePlainGltf UnpackGltf(const eGltfContainer& container, std::vector<eBytes> buffers, eImportReport& report) {
    return eUnpacking(container, std::move(buffers), report).Unpack();
}

}  // namespace standalone
