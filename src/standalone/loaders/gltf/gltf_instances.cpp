#include "standalone/loaders/gltf/gltf_instances.h"

#include <algorithm>
#include <array>
#include <optional>

#include "standalone/loaders/gltf/file/gltf_place.h"
#include "standalone/loaders/gltf/gltf_axes.h"
#include "standalone/loaders/shared/mesh_properties.h"

namespace standalone {
namespace {

constexpr std::array<float, 4> kNoRotation = {0, 0, 0, 1};

// Many nodes may refer to the same numbers, so a small file can unfold to any number of nodes.
constexpr std::size_t kMostInstances = std::size_t{1} << 16;

struct eInstanceNumbers {
    std::vector<float> translations, rotations, scales;  // empty where the file has none
    std::size_t count = 0;
};

class eInstanceReader {
public:
    eInstanceReader(const eGltfImport& ownImport, const tinygltf::Value& ownAttributes, std::string ownPlace)
        : import(ownImport), attributes(ownAttributes), place(std::move(ownPlace)) {}

    eInstanceNumbers Read() {
        eInstanceNumbers numbers;
        numbers.translations = Floats("TRANSLATION", 3);
        numbers.rotations = Floats("ROTATION", 4);
        numbers.scales = Floats("SCALE", 3);
        numbers.count = count.value_or(0);
        return numbers;
    }

private:
    std::vector<float> Floats(const char* attribute, std::size_t width) {
        if (!attributes.Has(attribute)) {
            return {};
        }
        const int accessor = attributes.Get(attribute).GetNumberAsInt();
        const std::size_t own = import.accessors.Count(accessor);
        if (own > kMostInstances || count.value_or(own) != own) {
            import.report.Problem(place, eMessageId::GltfInstances, own, accessor);
            return {};
        }
        count = own;
        return import.accessors.Floats(accessor, width, place);
    }

    const eGltfImport& import;
    const tinygltf::Value& attributes;
    std::string place;
    std::optional<std::size_t> count;
};

host::Point3 PointOf(const std::vector<float>& numbers, std::size_t i) {
    return {numbers[3 * i], numbers[3 * i + 1], numbers[3 * i + 2]};
}

std::vector<ePlacement> PlacementsOf(const eInstanceNumbers& numbers) {
    std::vector<ePlacement> placements(numbers.count);
    for (std::size_t i = 0; i < numbers.count; ++i) {
        ePlacement& placement = placements[i];
        if (!numbers.translations.empty()) {
            placement.position = ToHostPosition(PointOf(numbers.translations, i), {});
        }
        std::array<float, 4> rotation = kNoRotation;
        if (!numbers.rotations.empty()) {
            std::copy_n(numbers.rotations.begin() + static_cast<std::ptrdiff_t>(4 * i), 4, rotation.begin());
        }
        placement.rotation = ToHostRotation(rotation == std::array<float, 4>{} ? kNoRotation : rotation, {});
        if (!numbers.scales.empty()) {
            placement.scale = ToHostScale(PointOf(numbers.scales, i), {});
        }
    }
    return placements;
}

}  // namespace

std::vector<ePlacement> GltfInstancesOf(const eGltfImport& import, int node) {
    const tinygltf::Node& source = import.model.nodes[static_cast<std::size_t>(node)];
    const auto extension = source.extensions.find("EXT_mesh_gpu_instancing");
    if (extension == source.extensions.end()) {
        return {};
    }
    const int record = import.nodes[static_cast<std::size_t>(node)].record;
    if (source.skin >= 0 || IsBoundToNode(import.scene.nodes[static_cast<std::size_t>(record)].properties)) {
        import.report.CannotShow(ePhrase::LostInstances);
        return {};
    }
    const std::string place = GltfPlace("nodes", node) + "/extensions/EXT_mesh_gpu_instancing";
    return PlacementsOf(eInstanceReader(import, extension->second.Get("attributes"), place).Read());
}

}  // namespace standalone
