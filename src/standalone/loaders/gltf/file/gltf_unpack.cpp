#include "standalone/loaders/gltf/file/gltf_unpack.h"

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

constexpr std::string_view kMeshopt = "EXT_meshopt_compression";
constexpr std::string_view kDraco = "KHR_draco_mesh_compression";

// Beyond this a file asks for more memory than any scene is worth.
constexpr std::size_t kMostUnpacked = std::size_t{1} << 30;

class eUnpacking {
public:
    eUnpacking(const eJsonTree& document, tinygltf::Model& ownModel, eGltfBuffers& ownBuffers,
               eImportReport& ownReport)
        : json(document), model(ownModel), buffers(ownBuffers), report(ownReport) {}

    void Unpack() {
        UnpackViews();
        UnpackMeshes();
        if (!report.HasProblems()) {
            CheckStandIns();
        }
    }

private:
    std::size_t SizeAt(eJsonIndex object, std::string_view key) const {
        return static_cast<std::size_t>(JsonWhole(json, object, key, 0));
    }

    // The document is checked against the lengths that it tells, and those against the bytes.
    std::optional<std::span<const std::uint8_t>> BytesOf(int buffer, std::size_t offset,
                                                         std::size_t length) const {
        const std::span<const std::uint8_t> all = buffers.Bytes(buffer);
        if (offset > all.size() || length > all.size() - offset) {
            return std::nullopt;
        }
        return all.subspan(offset, length);
    }

    bool Affords(std::size_t size, const std::string& place) {
        unpacked += size;
        if (unpacked > kMostUnpacked) {
            report.Problem(place, eMessageId::GltfUnpackedSize);
        }
        return unpacked <= kMostUnpacked;
    }

    void UnpackViews() {
        const std::vector<eJsonIndex> entries = GltfEntries(json, "bufferViews");
        for (std::size_t view = 0; view < entries.size(); ++view) {
            const eJsonIndex packed = FindJson(json, entries[view], {"extensions", kMeshopt});
            if (packed != kNoJson && KnowsMeshopt()) {
                UnpackView(model.bufferViews[view], packed, GltfPlace("bufferViews", view));
            }
        }
    }

    void UnpackView(tinygltf::BufferView& view, eJsonIndex packed, const std::string& place) {
        const auto bytes = BytesOf(static_cast<int>(JsonWhole(json, packed, "buffer", 0)),
                                   SizeAt(packed, "byteOffset"), SizeAt(packed, "byteLength"));
        std::optional<eBytes> elements =
            bytes ? DecodeMeshopt({*bytes, SizeAt(packed, "count"), SizeAt(packed, "byteStride"),
                                   JsonText(json, packed, "mode"), JsonText(json, packed, "filter")})
                  : std::nullopt;
        if (!elements || elements->empty()) {
            report.Problem(place, eMessageId::MeshoptBytes, kMeshopt);
        } else if (Affords(elements->size(), place)) {
            view.byteOffset = 0;
            view.byteLength = elements->size();
            view.buffer = buffers.Add(std::move(*elements));
        }
    }

    void UnpackMeshes() {
        const std::vector<eJsonIndex> entries = GltfEntries(json, "meshes");
        for (std::size_t mesh = 0; mesh < entries.size(); ++mesh) {
            std::size_t i = 0;
            for (const eJsonIndex entry : json.Children(json.FindMember(entries[mesh], "primitives"))) {
                const eJsonIndex packed = FindJson(json, entry, {"extensions", kDraco});
                if (packed != kNoJson && KnowsDraco()) {
                    UnpackPrimitive(model.meshes[mesh].primitives[i], packed,
                                    GltfPlace("meshes", mesh) + "/primitives/" + std::to_string(i));
                }
                ++i;
            }
        }
    }

    void UnpackPrimitive(tinygltf::Primitive& primitive, eJsonIndex packed, const std::string& place) {
        std::vector<int> accessors;
        std::vector<eDracoAttribute> wanted;
        for (const eJsonIndex id : json.Children(json.FindMember(packed, "attributes"))) {
            const auto attribute = primitive.attributes.find(std::string(json.Key(id)));
            if (attribute != primitive.attributes.end()) {
                accessors.push_back(attribute->second);
                wanted.push_back(
                    WantedFor(attribute->second, static_cast<std::uint32_t>(json.values[id].integer)));
            }
        }
        const tinygltf::BufferView& view = model.bufferViews[SizeAt(packed, "bufferView")];
        const auto bytes = BytesOf(view.buffer, view.byteOffset, view.byteLength);
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

    tinygltf::Accessor& AccessorAt(int number) { return model.accessors[static_cast<std::size_t>(number)]; }

    eDracoAttribute WantedFor(int number, std::uint32_t id) {
        const tinygltf::Accessor& accessor = AccessorAt(number);
        const int width = tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(accessor.type));
        return {id, accessor.componentType, static_cast<std::size_t>(width)};
    }

    void Fill(int number, std::size_t count, eBytes bytes, const std::string& place) {
        if (!Affords(bytes.size(), place)) {
            return;
        }
        tinygltf::BufferView& view = model.bufferViews.emplace_back();
        view.byteLength = bytes.size();
        view.buffer = buffers.Add(std::move(bytes));
        tinygltf::Accessor& filled = AccessorAt(number);
        filled.bufferView = static_cast<int>(model.bufferViews.size()) - 1;
        filled.byteOffset = 0;
        filled.count = count;
    }

    void SetCorners(tinygltf::Primitive& primitive, const std::vector<std::uint32_t>& corners,
                    const std::string& place) {
        if (primitive.indices < 0) {
            primitive.indices = static_cast<int>(model.accessors.size());
            model.accessors.emplace_back().type = TINYGLTF_TYPE_SCALAR;
        }
        const auto* first = reinterpret_cast<const std::uint8_t*>(corners.data());
        AccessorAt(primitive.indices).componentType = TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT;
        Fill(primitive.indices, corners.size(), eBytes(first, first + corners.size() * sizeof(std::uint32_t)),
             place);
        primitive.mode = TINYGLTF_MODE_TRIANGLES;
    }

    // Of the buffers only those are empty that hold nothing, as their views are all compressed.
    void CheckStandIns() {
        for (std::size_t view = 0; view < model.bufferViews.size(); ++view) {
            if (buffers.Bytes(model.bufferViews[view].buffer).empty()) {
                report.Problem(GltfPlace("bufferViews", view), eMessageId::GltfViewPacked);
            }
        }
    }

    const eJsonTree& json;
    tinygltf::Model& model;
    eGltfBuffers& buffers;
    eImportReport& report;
    std::size_t unpacked = 0;  // bytes, so far
};

}  // namespace

void UnpackGltf(const eJsonTree& json, tinygltf::Model& model, eGltfBuffers& buffers, eImportReport& report) {
    eUnpacking(json, model, buffers, report).Unpack();
}

}  // namespace standalone
